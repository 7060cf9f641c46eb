foreach(name IN ITEMS Category CategoryReltn CategoryReltnMap)
  zdm_add_fuzz(${name} ${PROJECT_SOURCE_DIR}/tests/categories/CategorySupport.cpp)
  target_link_libraries(${name}_fuzz PRIVATE zdm_test_support)
endforeach()
