# Fuzz targets for the readers of `ditto` and `installer`. The readers are compiled once more, so that the fuzzer sees
# their branches. Every target begins with the archives that Tests/tools/make-forms makes by public tools.
get_target_property(expansion VantExpansion SOURCES)
get_target_property(package VantPackage SOURCES)
set(readers ${expansion} ${package})
list(TRANSFORM readers PREPEND ${PROJECT_SOURCE_DIR}/Installer/GNUstep/tools/)
find_package(EXPAT REQUIRED)
find_package(ZLIB REQUIRED)
add_library(VantFuzzedReaders STATIC ${readers})
target_compile_options(VantFuzzedReaders PRIVATE -fsanitize=fuzzer-no-link)
target_include_directories(VantFuzzedReaders PUBLIC $<TARGET_PROPERTY:VantExpansion,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(VantFuzzedReaders PUBLIC
    PkgConfig::LIBARCHIVE PkgConfig::LZMA PkgConfig::PLIST PkgConfig::DUKTAPE EXPAT::EXPAT ZLIB::ZLIB)
vant_warnings(VantFuzzedReaders)

foreach(name ZipFuzz CpioFuzz PackageFuzz DistributionFuzz)
    add_executable(${name} ${name}.cpp)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer -static-libsan)
    target_link_libraries(${name} PRIVATE VantFuzzedReaders)
    vant_warnings(${name})
    add_dependencies(${name} ArchiveForms)
    set(found ${CMAKE_CURRENT_BINARY_DIR}/${name}.found)
    file(MAKE_DIRECTORY ${found})
    add_test(NAME Fuzz.${name}
        COMMAND ${name} -max_total_time=3 -max_len=16384 -seed=1 -timeout=20 ${found} ${CMAKE_BINARY_DIR}/forms)
    # The tools' worker gets no such piece of memory either.
    set_tests_properties(Fuzz.${name} PROPERTIES
        ENVIRONMENT ASAN_OPTIONS=detect_leaks=0:max_allocation_size_mb=64:allocator_may_return_null=1)
endforeach()
