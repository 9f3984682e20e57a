# The host as macOS runs it: VantHost.app beside the bundle. It is here to try the pane with, so it is signed ad hoc.
set_target_properties(VantHost PROPERTIES
    MACOSX_BUNDLE TRUE
    MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/resources/Info.plist.in
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR})
# The Xcode generator takes the version of the whole project otherwise.
set_target_properties(VantHostRules VantHost PROPERTIES
    XCODE_ATTRIBUTE_MACOSX_DEPLOYMENT_TARGET ${CMAKE_OSX_DEPLOYMENT_TARGET})
target_sources(VantHost PRIVATE ${VANT_HOST_TABLES})
foreach(file IN LISTS VANT_HOST_TABLES)
    get_filename_component(folder ${file} DIRECTORY)
    get_filename_component(folder ${folder} NAME)
    set_source_files_properties(${file} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${folder})
endforeach()
