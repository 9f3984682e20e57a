# Where the fuzzer isn't built in, its targets are linked together and get the seeds.
set(targets PropertyListFuzz TextFuzz InstallerOutputFuzz HttpFuzz DecoderFuzz ZipFuzz CpioFuzz PackageFuzz
    DistributionFuzz)
foreach(name IN LISTS targets)
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_DEFINITIONS LLVMFuzzerTestOneInput=${name})
endforeach()
list(TRANSFORM targets APPEND .cpp)
add_executable(VantFuzzSeedTests ReplayTest.cpp ${targets})
target_compile_definitions(VantFuzzSeedTests PRIVATE
    VANT_SEEDS="${CMAKE_BINARY_DIR}/seeds" VANT_FORMS="${CMAKE_BINARY_DIR}/forms")
target_link_libraries(VantFuzzSeedTests PRIVATE VantRules VantPackages VantExpansion VantDownloadEngine GTest::gtest_main)
vant_warnings(VantFuzzSeedTests)
add_dependencies(VantFuzzSeedTests FuzzSeeds ArchiveForms)
gtest_discover_tests(VantFuzzSeedTests PROPERTIES LABELS tools TIMEOUT 120)
