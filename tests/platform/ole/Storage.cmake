target_sources(ole_tests PRIVATE
  CompoundBuilder.cpp
  CompoundFileCheck_test.cpp
  StorageSupport.cpp
  Storage_test.cpp
  Stream_test.cpp)
