# The benchmark document W(n): its bounds (plain), the library (workload), and the heap blocks that
# the library takes (workload_blocks). bench/report runs them.
add_library(workload_runner STATIC workload/Runner.cpp)
target_include_directories(workload_runner PUBLIC ${PROJECT_SOURCE_DIR})
add_executable(plain workload/Plain.cpp workload/PlainBlocks.cpp workload/PlainPacked.cpp)
target_link_libraries(plain PRIVATE workload_runner)
add_executable(workload workload/Workload.cpp workload/LibraryDocument.cpp)
target_link_libraries(workload PRIVATE workload_runner zdm::document)
add_executable(workload_blocks workload/BlockCounts.cpp workload/LibraryDocument.cpp)
target_link_libraries(workload_blocks PRIVATE workload_runner zdm::document)
