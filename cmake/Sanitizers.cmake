# VANT_SANITIZE: a comma list for -fsanitize= (the asan and tsan presets set it). It holds for every target.
set(VANT_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

if(VANT_SANITIZE)
    add_compile_options(-fsanitize=${VANT_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VANT_SANITIZE})
    if(APPLE)
        return()
    endif()
    if(VANT_SANITIZE STREQUAL "thread")
        # Clang's shared runtime dies before main. The static one lies in each program, and exports to the bundle that it
        # loads what instrumented code calls; these two only if asked.
        add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:LINKER:--export-dynamic-symbol=__tsan_ignore_thread_begin,--export-dynamic-symbol=__tsan_ignore_thread_end>)
    else()
        # The bundle is loaded by hosts of many kinds: one shared runtime serves the host and everything it loads.
        add_link_options(-shared-libsan)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-runtime-dir
            OUTPUT_VARIABLE sanitizerRuntime OUTPUT_STRIP_TRAILING_WHITESPACE)
        # As a link option: CMake knows no run path for programs that are Objective-C++ alone.
        add_link_options(LINKER:-rpath,${sanitizerRuntime})
        # Programs that preload something else must preload the sanitizer's runtime before it.
        set(VANT_SANITIZER_RUNTIME ${sanitizerRuntime}/libclang_rt.asan-${CMAKE_SYSTEM_PROCESSOR}.so)
    endif()
endif()
