target_sources(ole_tests PRIVATE
  CompoundBuilder.cpp
  CompoundFileCheck_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/support/TempFile.cpp
  StorageSupport.cpp
  Storage_test.cpp
  Stream_test.cpp)
if(NOT WIN32)
  target_sources(ole_tests PRIVATE PortableStorage_test.cpp)
  # A program of its own, because it replaces the allocator.
  zdm_add_tests(storage_memory_tests
    CompoundBuilder.cpp
    FailingAllocator.cpp
    StorageMemory_test.cpp
    ${PROJECT_SOURCE_DIR}/tests/support/TempFile.cpp
    StorageSupport.cpp)
endif()

# Files that go from one system to the other: tests/exchange.sh.
add_executable(storage_exchange
  CompoundBuilder.cpp
  storage_exchange.cpp
  StorageSupport.cpp)
target_link_libraries(storage_exchange PRIVATE gtest zdm_test_support)
