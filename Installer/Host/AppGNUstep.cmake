# The host as GNUstep runs it: build/<preset>/VantHost.app, with a theme.
set(VANT_HOST_APP ${CMAKE_BINARY_DIR}/VantHost.app)
set_target_properties(VantHost PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${VANT_HOST_APP})
add_subdirectory(theme)
target_link_libraries(VantHost PRIVATE VantTheme)
configure_file(resources/Info-gnustep.plist.in ${VANT_HOST_APP}/Resources/Info-gnustep.plist @ONLY)

set(tables)
foreach(file IN LISTS VANT_HOST_TABLES)
    string(REPLACE resources/ ${VANT_HOST_APP}/Resources/ copy ${file})
    add_custom_command(OUTPUT ${copy} DEPENDS ${file}
        COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_CURRENT_SOURCE_DIR}/${file} ${copy} VERBATIM)
    list(APPEND tables ${copy})
endforeach()
add_custom_target(VantHostTables ALL DEPENDS ${tables})
add_dependencies(VantHost VantHostTables)

# All that ./run needs.
add_custom_target(VantRun DEPENDS VantBundle VantHost installer_tool ditto_tool)
