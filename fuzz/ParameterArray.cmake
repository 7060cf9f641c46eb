zdm_add_fuzz(ParameterArray ${PROJECT_SOURCE_DIR}/tests/parameters/ParameterSupport.cpp)
target_link_libraries(ParameterArray_fuzz PRIVATE zdm_test_support)
