# VANT_SANITIZE: a comma list for -fsanitize= (the asan and tsan presets set it). It holds for every target.
set(VANT_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

if(VANT_SANITIZE)
    add_compile_options(-fsanitize=${VANT_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VANT_SANITIZE})
    if(NOT APPLE)
        # The bundle is loaded by hosts of many kinds: one shared runtime serves the host and everything it loads.
        add_link_options(-shared-libsan)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-runtime-dir
            OUTPUT_VARIABLE sanitizerRuntime OUTPUT_STRIP_TRAILING_WHITESPACE)
        # As a link option: CMake knows no run path for programs that are Objective-C++ alone.
        add_link_options(LINKER:-rpath,${sanitizerRuntime})
        # Programs that preload something else must preload the sanitizer's runtime before it.
        string(REGEX MATCH "^(address|thread)" sanitizerName "${VANT_SANITIZE}")
        string(SUBSTRING "${sanitizerName}" 0 1 sanitizerLetter)
        set(VANT_SANITIZER_RUNTIME
            ${sanitizerRuntime}/libclang_rt.${sanitizerLetter}san-${CMAKE_SYSTEM_PROCESSOR}.so)
    endif()
endif()
