# vant_common_architectures(RESULT LIBRARY...): those of CMAKE_OSX_ARCHITECTURES that every library is for. One that `lipo` cannot
# tell of, such as a stub, counts as being for all.
function(vant_common_architectures result)
    set(common ${CMAKE_OSX_ARCHITECTURES})
    foreach(library IN LISTS ARGN)
        execute_process(COMMAND lipo -archs ${library}
            OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE status)
        if(NOT status EQUAL 0)
            continue()
        endif()
        separate_arguments(found)
        foreach(architecture IN LISTS common)
            if(NOT architecture IN_LIST found)
                list(REMOVE_ITEM common ${architecture})
            endif()
        endforeach()
    endforeach()
    set(${result} ${common} PARENT_SCOPE)
endfunction()
