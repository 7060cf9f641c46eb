add_executable(salvage Salvage_bench.cpp)
target_link_libraries(salvage PRIVATE zdm::document)
