# A fuzz target for what vantmedia reads and makes of it, from the bytes of an archive or a list to the report. Its
# sources are compiled once more, so that the fuzzer sees their branches; packages have a target of their own.
get_target_property(media VantMedia SOURCES)
list(TRANSFORM media PREPEND ${PROJECT_SOURCE_DIR}/Installer/Media/)
add_library(VantFuzzedMedia STATIC ${media})
target_compile_options(VantFuzzedMedia PRIVATE -fsanitize=fuzzer-no-link)
target_include_directories(VantFuzzedMedia PUBLIC $<TARGET_PROPERTY:VantMedia,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(VantFuzzedMedia PUBLIC VantFuzzedReaders VantRules VantHostRules VantDownloadEngine)
vant_warnings(VantFuzzedMedia)
vant_foundation(VantFuzzedMedia)

add_executable(MediaFuzz MediaFuzz.cpp)
target_compile_options(MediaFuzz PRIVATE -fsanitize=fuzzer)
target_link_options(MediaFuzz PRIVATE -fsanitize=fuzzer -static-libsan)
target_link_libraries(MediaFuzz PRIVATE VantFuzzedMedia)
vant_warnings(MediaFuzz)
add_dependencies(MediaFuzz ArchiveForms)
set(found ${CMAKE_CURRENT_BINARY_DIR}/MediaFuzz.found)
file(MAKE_DIRECTORY ${found})
add_test(NAME Fuzz.MediaFuzz
    COMMAND MediaFuzz -max_total_time=3 -max_len=16384 -seed=1 -timeout=20 ${found} ${CMAKE_BINARY_DIR}/forms)
set_tests_properties(Fuzz.MediaFuzz PROPERTIES
    ENVIRONMENT ASAN_OPTIONS=detect_leaks=0:max_allocation_size_mb=64:allocator_may_return_null=1)
