# Fuzz targets for the readers of `ditto` and `installer`. The readers are compiled once more, so that the fuzzer sees
# their branches. Every target begins with the archives that Tests/tools/make-forms makes by public tools.
set(readers)
foreach(part VantArchives VantPackages VantExpansion VantPackageInstallation)
    get_target_property(sources ${part} SOURCES)
    list(APPEND readers ${sources})
endforeach()
list(TRANSFORM readers PREPEND ${PROJECT_SOURCE_DIR}/Installer/GNUstep/tools/)
find_package(EXPAT REQUIRED)
find_package(ZLIB REQUIRED)
add_library(VantFuzzedReaders STATIC ${readers})
target_compile_options(VantFuzzedReaders PRIVATE -fsanitize=fuzzer-no-link)
target_include_directories(VantFuzzedReaders PUBLIC $<TARGET_PROPERTY:VantArchives,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(VantFuzzedReaders PUBLIC
    PkgConfig::LIBARCHIVE PkgConfig::LZMA PkgConfig::PLIST PkgConfig::DUKTAPE EXPAT::EXPAT ZLIB::ZLIB)
vant_warnings(VantFuzzedReaders)

foreach(name ZipFuzz CpioFuzz PackageFuzz DistributionFuzz)
    vant_fuzz_target(${name} 3 -max_len=16384 ${CMAKE_BINARY_DIR}/forms)
    target_link_libraries(${name} PRIVATE VantFuzzedReaders)
    add_dependencies(${name} ArchiveForms)
endforeach()
