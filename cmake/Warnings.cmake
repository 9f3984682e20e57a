# vant_warnings(TARGET): the project's warning level, as errors. Every target of ours calls it.
function(vant_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wshadow -Wconversion -Werror
        $<$<COMPILE_LANGUAGE:OBJCXX>:-Werror=objc-property-implementation>)
endfunction()
