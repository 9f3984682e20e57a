# vant_warnings(TARGET): the project's warning level, as errors. Every target of ours calls it.
function(vant_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wshadow -Wconversion -Werror
        $<$<COMPILE_LANGUAGE:OBJCXX>:-Werror=objc-property-implementation>)
    if(APPLE)
        # The platform marks what the pane is built on, its URL download and its privileged launch among them, as superseded.
        target_compile_options(${target} PRIVATE -Wno-deprecated-declarations)
    endif()
endfunction()
