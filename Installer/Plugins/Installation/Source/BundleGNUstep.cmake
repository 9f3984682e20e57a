# The bundle as GNUstep loads it: build/<preset>/VantInstallation.bundle, with the platform layer and its tools inside.
set(VANT_BUNDLE ${CMAKE_BINARY_DIR}/VantInstallation.bundle)
set(VANT_BUNDLE_RESOURCES ${VANT_BUNDLE}/Resources)

target_link_libraries(VantInstallation PRIVATE VantGNUstepLayer)
# The C library still answers to some of the layer's names for old programs (sysctl, always with failure), and a host may
# have functions of these names too: the bundle calls its own.
target_link_options(VantInstallation PRIVATE -Wl,-Bsymbolic-functions)
set_target_properties(VantInstallation PROPERTIES
    PREFIX "" SUFFIX "" LIBRARY_OUTPUT_DIRECTORY ${VANT_BUNDLE})

configure_file(resources/Info-gnustep.plist.in ${VANT_BUNDLE_RESOURCES}/Info-gnustep.plist @ONLY)

# vant_bundle_file(FILE FOLDER): keeps a copy of the file in a folder of the bundle's resources.
set(bundleFiles)
function(vant_bundle_file file folder)
    get_filename_component(name ${file} NAME)
    set(copy ${VANT_BUNDLE_RESOURCES}/${folder}/${name})
    cmake_path(NORMAL_PATH copy)
    add_custom_command(OUTPUT ${copy} DEPENDS ${file}
        COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy} VERBATIM)
    set(bundleFiles ${bundleFiles} ${copy} PARENT_SCOPE)
endfunction()

foreach(file IN LISTS VANT_INTERFACE VANT_IMAGES)
    vant_bundle_file(${CMAKE_CURRENT_SOURCE_DIR}/${file} .)
endforeach()
foreach(file IN LISTS VANT_TABLES)
    get_filename_component(folder ${file} DIRECTORY)
    get_filename_component(folder ${folder} NAME)
    vant_bundle_file(${CMAKE_CURRENT_SOURCE_DIR}/${file} ${folder})
endforeach()
foreach(tool IN ITEMS ditto installer)
    vant_bundle_file(${CMAKE_BINARY_DIR}/tools/${tool} tools)
endforeach()

add_custom_target(VantBundle ALL DEPENDS ${bundleFiles} VantInstallation)
