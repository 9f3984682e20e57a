# Signing the bundle, and packing it for whoever builds a host.
set(VANT_SIGN_IDENTITY "" CACHE STRING "Whom the bundle is signed by, as codesign takes it; ad hoc when empty")

set(product $<TARGET_BUNDLE_DIR:VantInstallation>)
if(CMAKE_CROSSCOMPILING)
    # There is no codesign; the linker signs ad hoc what a Mac would not load unsigned.
    add_custom_target(VantSign ALL DEPENDS VantInstallation)
else()
    # A secure time stamp and the hardened runtime are what notarisation asks for; an ad-hoc signature can have no stamp.
    if(VANT_SIGN_IDENTITY)
        set(signing --sign ${VANT_SIGN_IDENTITY} --options runtime --timestamp)
    else()
        set(signing --sign - --timestamp=none)
    endif()
    add_custom_target(VantSign ALL DEPENDS VantInstallation
        COMMAND codesign --force ${signing} ${product}
        COMMAND codesign --verify --strict --verbose=2 ${product} VERBATIM)
    # Xcode would sign by its own settings before this.
    set_target_properties(VantInstallation PROPERTIES XCODE_ATTRIBUTE_CODE_SIGNING_ALLOWED NO)
endif()

# cmake --build --preset macos --target package
set(archive VantInstallation-${PROJECT_VERSION}-macos.zip)
add_custom_target(package DEPENDS VantSign
    COMMAND ${CMAKE_COMMAND} -E rm -f ${CMAKE_BINARY_DIR}/${archive} ${CMAKE_BINARY_DIR}/${archive}.sha256
    COMMAND ${CMAKE_COMMAND} -E tar cf ${CMAKE_BINARY_DIR}/${archive} --format=zip VantInstallation.bundle
    COMMAND ${CMAKE_COMMAND} -DFILE=${CMAKE_BINARY_DIR}/${archive} -P ${CMAKE_CURRENT_LIST_DIR}/Checksum.cmake
    WORKING_DIRECTORY ${product}/.. VERBATIM)
