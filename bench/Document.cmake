zdm_add_bench(Document_bench Document_bench.cpp)
target_link_libraries(Document_bench PRIVATE zdm::document)
# Its fsync is found before that of the C library.
set_target_properties(Document_bench PROPERTIES ENABLE_EXPORTS ON)
