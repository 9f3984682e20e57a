# The bundle as Cocoa loads it, with the nib compiled by ibtool. Where there is no ibtool, as when a Debian machine builds
# the bundle to check it, the uncompiled file takes the nib's place.
if(CMAKE_CROSSCOMPILING)
    set(nib ${CMAKE_CURRENT_SOURCE_DIR}/${VANT_INTERFACE})
else()
    set(nib ${CMAKE_CURRENT_BINARY_DIR}/VTInstallation.nib)
    add_custom_command(OUTPUT ${nib} DEPENDS ${VANT_INTERFACE}
        COMMAND ibtool --errors --warnings --notices --output-format human-readable-text
            --minimum-deployment-target ${CMAKE_OSX_DEPLOYMENT_TARGET}
            --compile ${nib} ${CMAKE_CURRENT_SOURCE_DIR}/${VANT_INTERFACE} VERBATIM)
endif()

target_sources(VantInstallation PRIVATE ${nib} ${VANT_IMAGES} ${VANT_TABLES})
set_source_files_properties(${nib} ${VANT_IMAGES} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
foreach(file IN LISTS VANT_TABLES)
    get_filename_component(folder ${file} DIRECTORY)
    get_filename_component(folder ${folder} NAME)
    set_source_files_properties(${file} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${folder})
endforeach()

set_target_properties(VantInstallation PROPERTIES
    BUNDLE TRUE
    BUNDLE_EXTENSION bundle
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/resources/Info.plist.in
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})

# A host process holds many plug-ins: none of them is to meet this one's C++, or its other classes, by name.
set_target_properties(VantRules VantInstallation PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
set(exports ${CMAKE_CURRENT_SOURCE_DIR}/resources/exports)
target_link_options(VantInstallation PRIVATE LINKER:-exported_symbols_list,${exports})
set_property(TARGET VantInstallation APPEND PROPERTY LINK_DEPENDS ${exports})

include(${PROJECT_SOURCE_DIR}/cmake/macos/Package.cmake)
