foreach(name IN ITEMS ReltnColl DfValue)
  zdm_add_fuzz(${name} ${PROJECT_SOURCE_DIR}/tests/relations/ReltnSupport.cpp)
  target_link_libraries(${name}_fuzz PRIVATE zdm_test_support)
endforeach()
