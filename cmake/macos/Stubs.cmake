# VANT_STUBS: the stubs that programs for macOS are linked with on Debian. They are made when the build is configured, so a
# header or a list that changes configures it again, and a stub that changes links again.
file(GLOB_RECURSE platformFiles CONFIGURE_DEPENDS
    ${CMAKE_CURRENT_LIST_DIR}/headers/*.h ${CMAKE_CURRENT_LIST_DIR}/symbols/* ${CMAKE_CURRENT_LIST_DIR}/sysroot)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${platformFiles})
file(GLOB_RECURSE VANT_STUBS ${CMAKE_OSX_SYSROOT}/*.tbd)

# Each slice is compiled for the oldest system that it meets, as on a Mac, and hears of what that one calls deprecated.
add_compile_options("SHELL:-Xarch_arm64 -mmacosx-version-min=11.0")

# What the compiler searches by itself, which a library's target must not put before the C++ library's headers. CMake learns it
# from the compiler, unless a cache of the compiler's results answers with other paths.
foreach(language C CXX OBJCXX)
    list(APPEND CMAKE_${language}_IMPLICIT_INCLUDE_DIRECTORIES ${CMAKE_OSX_SYSROOT}/usr/include)
endforeach()
