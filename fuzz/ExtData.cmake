foreach(name IN ITEMS ExtDataCollection ExtDataMgr)
  zdm_add_fuzz(${name} ${PROJECT_SOURCE_DIR}/tests/extdata/ExtDataSupport.cpp)
  target_link_libraries(${name}_fuzz PRIVATE zdm_test_support)
endforeach()
