# What a release for Debian holds, below whatever prefix it is installed to:
#
#   bin/vantmedia                      the program; a link to lib/vant-installation/vantmedia
#   lib/vant-installation/             the bundle, with the platform layer and its tools inside
#   lib/vant-installation/system       usr/sbin/installer, for VANT_SYSTEM_ROOT
#   include/vant-installation/         what a host compiles against
#   share/vant-installation/           the sample host: as an application and as its source; make-package
#   share/doc, share/man               the pages
#
# cmake --install build/release --prefix DIR; cmake --build build/release --target package makes the archive, the Debian
# package of vantmedia, and a checksum beside each.
set(libraries lib/vant-installation)
set(bundle ${libraries}/VantInstallation.bundle)
set(samples share/vant-installation)
set(documents share/doc/vant-installation)

install(TARGETS VantInstallation LIBRARY DESTINATION ${bundle} COMPONENT pane)
install(DIRECTORY ${CMAKE_BINARY_DIR}/VantInstallation.bundle/Resources DESTINATION ${bundle} COMPONENT pane
    PATTERN tools EXCLUDE)
install(TARGETS ditto_tool installer_tool RUNTIME DESTINATION ${bundle}/Resources/tools COMPONENT pane)
install(TARGETS installer_tool RUNTIME DESTINATION ${libraries}/system/usr/sbin COMPONENT pane)

install(FILES Installer/Plugins/Installation/Source/shell/VantInstallation.h
    DESTINATION include/vant-installation COMPONENT pane)
install(DIRECTORY Installer/GNUstep/include/ DESTINATION include/vant-installation COMPONENT pane)

install(PROGRAMS Samples/make-package DESTINATION ${samples} COMPONENT pane)
install(DIRECTORY Samples/host DESTINATION ${samples} COMPONENT pane PATTERN CMakeLists.txt EXCLUDE)
install(DIRECTORY ${CMAKE_BINARY_DIR}/SampleHost.app DESTINATION ${samples} COMPONENT pane
    PATTERN SampleHost EXCLUDE)
install(TARGETS SampleHost RUNTIME DESTINATION ${samples}/SampleHost.app COMPONENT pane)

# vantmedia looks for the bundle's string tables and for ditto beside itself.
install(TARGETS vantmedia RUNTIME DESTINATION ${libraries} COMPONENT vantmedia)
install(TARGETS ditto_tool RUNTIME DESTINATION ${libraries}/tools COMPONENT vantmedia)
install(DIRECTORY Installer/Plugins/Installation/Source/resources/ DESTINATION ${bundle}/Resources COMPONENT vantmedia
    FILES_MATCHING PATTERN *.strings PATTERN images EXCLUDE)

# vant_link(LINK TARGET COMPONENT): a relative link below the prefix.
function(vant_link link target component)
    install(CODE "
        set(link \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${link}\")
        get_filename_component(folder \"\${link}\" DIRECTORY)
        file(MAKE_DIRECTORY \"\${folder}\")
        file(CREATE_LINK ${target} \"\${link}\" SYMBOLIC)" COMPONENT ${component})
endfunction()
vant_link(bin/vantmedia ../${libraries}/vantmedia vantmedia)
vant_link(${samples}/SampleHost.app/PlugIns/VantInstallation.bundle ../../../../${bundle} pane)

install(FILES LICENSE CHANGELOG.md DESTINATION ${documents} COMPONENT pane)
install(DIRECTORY Documentation DESTINATION ${documents} COMPONENT pane)
file(READ Documentation/vantmedia.1 manual)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS Documentation/vantmedia.1)
string(REPLACE "\"\" \"VantInstallation\"" "\"\" \"VantInstallation ${PROJECT_VERSION}\"" manual "${manual}")
file(CONFIGURE OUTPUT release/vantmedia.1 CONTENT "${manual}" @ONLY)
# vant_compressed(FILE COPY): the form in which Debian keeps manuals and changelogs.
function(vant_compressed file copy)
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/release/${copy} DEPENDS ${file}
        COMMAND sh -c "gzip -9nc '${file}' >'${CMAKE_BINARY_DIR}/release/${copy}'" VERBATIM)
endfunction()
vant_compressed(${CMAKE_BINARY_DIR}/release/vantmedia.1 vantmedia.1.gz)
vant_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog.gz)
add_custom_target(VantReleasePages ALL
    DEPENDS ${CMAKE_BINARY_DIR}/release/vantmedia.1.gz ${CMAKE_BINARY_DIR}/release/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/release/vantmedia.1.gz DESTINATION share/man/man1 COMPONENT vantmedia)
install(FILES ${CMAKE_BINARY_DIR}/release/changelog.gz DESTINATION share/doc/vantmedia COMPONENT vantmedia)
install(FILES LICENSE DESTINATION share/doc/vantmedia RENAME copyright COMPONENT vantmedia)

set(CPACK_GENERATOR TXZ DEB)
set(CPACK_PACKAGE_NAME vant-installation)
set(CPACK_PACKAGE_VENDOR "The VantInstallation authors")
set(CPACK_PACKAGE_CONTACT "The VantInstallation authors <installation@quorvel.example>")
set(CPACK_PACKAGE_FILE_NAME vant-installation-${PROJECT_VERSION}-debian-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL vantmedia)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_VANTMEDIA_PACKAGE_NAME vantmedia)
set(CPACK_DEBIAN_VANTMEDIA_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_VANTMEDIA_DESCRIPTION "looks through the media of an installation pane
Says what the pane would install from a media folder, in which order and
from where, and what is wrong with the folder.")
include(CPack)
