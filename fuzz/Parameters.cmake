foreach(name IN ITEMS Definition DefinitionMgr)
  zdm_add_fuzz(${name})
  target_link_libraries(${name}_fuzz PRIVATE zdm_test_support)
endforeach()

zdm_add_fuzz(Parameter ${PROJECT_SOURCE_DIR}/tests/parameters/ParameterSupport.cpp)
target_link_libraries(Parameter_fuzz PRIVATE zdm_test_support)
