# vantmedia for macOS, beside the product: what it stands on comes from the SDK and from a package manager. Where something of
# that is missing, configuring says so, and the product is built without it.
find_package(PkgConfig)
set(lacking)
if(NOT PKG_CONFIG_FOUND)
    list(APPEND lacking pkg-config)
else()
    foreach(package libarchive liblzma libplist-2.0 duktape nlohmann_json)
        string(TOUPPER ${package} prefix)
        string(MAKE_C_IDENTIFIER ${prefix} prefix)
        pkg_check_modules(${prefix} QUIET ${package})
        if(NOT ${prefix}_FOUND)
            list(APPEND lacking ${package})
        endif()
    endforeach()
endif()
foreach(package CURL EXPAT ZLIB)
    find_package(${package})
    if(NOT ${package}_FOUND)
        list(APPEND lacking ${package})
    endif()
endforeach()
if(lacking)
    list(JOIN lacking ", " lacking)
    message(STATUS "vantmedia is left out, since this Mac lacks ${lacking}")
    return()
endif()

# A library of a package manager is often for this Mac's processor alone, and no program is for more than its libraries are.
include(cmake/macos/Architectures.cmake)
vant_common_architectures(architectures
    ${LIBARCHIVE_LINK_LIBRARIES} ${LIBLZMA_LINK_LIBRARIES} ${LIBPLIST_2_0_LINK_LIBRARIES} ${DUKTAPE_LINK_LIBRARIES})
if(CMAKE_OSX_ARCHITECTURES AND NOT architectures)
    message(STATUS "vantmedia is left out, since its libraries are for other processors than ${CMAKE_OSX_ARCHITECTURES}")
    return()
endif()

block()
    # The standard library's file system, which it uses and the pane does not, is that new.
    set(CMAKE_OSX_DEPLOYMENT_TARGET 10.15)
    set(CMAKE_OSX_ARCHITECTURES ${architectures})
    add_subdirectory(Installer/GNUstep)
    add_subdirectory(Installer/GNUstep/tools)
    add_subdirectory(Installer/Media)
    # The Xcode generator takes the version of the whole project otherwise.
    set_target_properties(VantDownloadEngine VantArchives VantPackages VantMedia vantmedia PROPERTIES
        XCODE_ATTRIBUTE_MACOSX_DEPLOYMENT_TARGET ${CMAKE_OSX_DEPLOYMENT_TARGET})
endblock()
