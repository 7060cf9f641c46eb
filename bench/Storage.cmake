zdm_add_bench(Storage_bench Storage_bench.cpp)
