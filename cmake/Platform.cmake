# vant_cocoa(TARGET): lets an Objective-C++ target use Foundation and AppKit, on either platform. A target that does not
# call it has no Cocoa include path, so a rule that strays into the platform does not compile. vant_foundation(TARGET):
# the same without AppKit, for a program that needs no display. VANT_PLATFORM ends the names of the files in folders
# called `platform`, of which each system has its own.
if(APPLE)
    set(VANT_PLATFORM Mac)
    if(CMAKE_CROSSCOMPILING)
        include(${CMAKE_CURRENT_LIST_DIR}/macos/Stubs.cmake)
    endif()
    function(vant_cocoa target)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
        target_link_libraries(${target} PRIVATE "-framework Cocoa" "-framework Security")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${VANT_STUBS})
    endfunction()
    function(vant_foundation target)
        target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
        target_link_libraries(${target} PRIVATE "-framework Foundation")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${VANT_STUBS})
    endfunction()
    return()
endif()

set(VANT_PLATFORM Debian)
find_package(PkgConfig REQUIRED)

# The Objective-C runtime headers lie in GCC's own include folder, whose C headers clang must never see first: -idirafter.
execute_process(COMMAND gcc -print-file-name=include
    OUTPUT_VARIABLE gccIncludes OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
find_library(OBJC_LIBRARY NAMES objc libobjc.so.4 HINTS ${gccIncludes}/.. REQUIRED)
find_library(GNUSTEP_BASE_LIBRARY gnustep-base REQUIRED)
find_library(GNUSTEP_GUI_LIBRARY gnustep-gui REQUIRED)

function(vant_foundation target)
    target_compile_definitions(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:OBJCXX>:GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 GNU_RUNTIME=1
        _NATIVE_OBJC_EXCEPTIONS>)
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-runtime=gcc -fobjc-exceptions -fexceptions -fconstant-string-class=NSConstantString
        -fno-strict-aliasing -isystem/usr/include/GNUstep -idirafter${gccIncludes}>)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/Installer/GNUstep/include)
    target_link_libraries(${target} PRIVATE ${GNUSTEP_BASE_LIBRARY} ${OBJC_LIBRARY} pthread)
endfunction()

function(vant_cocoa target)
    vant_foundation(${target})
    target_link_libraries(${target} PRIVATE ${GNUSTEP_GUI_LIBRARY})
endfunction()
