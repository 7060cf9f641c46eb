target_sources(ole_tests PRIVATE CompoundBuilder.cpp CompoundFileCheck_test.cpp Storage_test
                   .cpp StorageSupport.cpp Stream_test.cpp)
