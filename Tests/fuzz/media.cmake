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

vant_fuzz_target(MediaFuzz 3 -max_len=16384 ${CMAKE_BINARY_DIR}/forms)
target_link_libraries(MediaFuzz PRIVATE VantFuzzedMedia)
add_dependencies(MediaFuzz ArchiveForms)
