# The benchmark document W(n): bounds (plain) and the library (workload). bench/report runs both.
add_library(workload_runner STATIC workload/Runner.cpp)
target_include_directories(workload_runner PUBLIC ${PROJECT_SOURCE_DIR})
add_executable(plain workload/Plain.cpp workload/PlainBlocks.cpp workload/PlainPacked.cpp)
target_link_libraries(plain PRIVATE workload_runner)
