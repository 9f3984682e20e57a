# A Mac's bundle, built on Debian: clang 19 and LLVM's linker, Debian's libc++ headers, the platform's C headers, and the
# project's own headers for the frameworks. CONTRIBUTING.md and cmake/macos/README.md say what each part is.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 17) # macOS 10.13
set(CMAKE_SYSTEM_PROCESSOR arm64)

find_program(CMAKE_C_COMPILER clang-19 REQUIRED)
find_program(CMAKE_CXX_COMPILER clang++-19 REQUIRED)
find_program(CMAKE_OBJCXX_COMPILER clang++-19 REQUIRED)
find_program(CMAKE_AR llvm-ar-19 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)
find_program(VANT_LIBTOOL llvm-libtool-darwin-19 REQUIRED)

# Made anew when a header or a list changes; the checks of the compiler use the one that is there already.
set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/macos-sysroot)
cmake_path(ABSOLUTE_PATH CMAKE_OSX_SYSROOT NORMALIZE)
if(NOT CMAKE_IN_TRY_COMPILE)
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../../tools/prepare-macos
        OUTPUT_VARIABLE cHeaders OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/sysroot ${CMAKE_OSX_SYSROOT} ${cHeaders}
        COMMAND_ERROR_IS_FATAL ANY)
endif()

set(headers ${CMAKE_CURRENT_LIST_DIR}/headers)
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos)
    set(CMAKE_${language}_FLAGS_INIT "-B${CMAKE_OSX_SYSROOT}/bin")
    # One archive of both slices, which the plain archiver cannot make.
    set(CMAKE_${language}_ARCHIVE_CREATE "${VANT_LIBTOOL} -static -o <TARGET> <OBJECTS>")
    set(CMAKE_${language}_ARCHIVE_FINISH "")
endforeach()
foreach(language CXX OBJCXX)
    string(APPEND CMAKE_${language}_FLAGS_INIT " -isystem ${headers}/libc++ -isystem ${headers}")
endforeach()
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()

set(CMAKE_FIND_ROOT_PATH ${CMAKE_OSX_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The libraries that a package manager brings to a Mac.
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_OSX_SYSROOT}/opt/local/lib/pkgconfig)
