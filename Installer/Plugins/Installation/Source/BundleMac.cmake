# The bundle as Cocoa loads it, with the interface description compiled by ibtool.
set(compiledInterface ${CMAKE_CURRENT_BINARY_DIR}/VTInstallation.nib)
add_custom_command(OUTPUT ${compiledInterface} DEPENDS ${VANT_INTERFACE}
    COMMAND ibtool --compile ${compiledInterface} ${CMAKE_CURRENT_SOURCE_DIR}/${VANT_INTERFACE} VERBATIM)

target_sources(VantInstallation PRIVATE ${compiledInterface} ${VANT_IMAGES} ${VANT_TABLES})
set_source_files_properties(${compiledInterface} ${VANT_IMAGES} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
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
