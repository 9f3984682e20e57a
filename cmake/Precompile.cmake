# vant_precompile(TARGET LANGUAGE HEADER...): headers that are read once for all sources of the target in that language. With
# VANT_PRECOMPILE alone: the debug build leaves them out, since a source that forgets an include must not compile there.
option(VANT_PRECOMPILE "Read large headers once for each target" OFF)

function(vant_precompile target language)
    if(NOT VANT_PRECOMPILE)
        return()
    endif()
    foreach(header IN LISTS ARGN)
        string(REPLACE ">" "$<ANGLE-R>" header ${header})
        target_precompile_headers(${target} PRIVATE "$<$<COMPILE_LANGUAGE:${language}>:${header}>")
    endforeach()
endfunction()
