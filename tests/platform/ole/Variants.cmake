target_sources(ole_tests PRIVATE
  VariantConvert_test.cpp
  VariantStream_test.cpp
  Variant_test.cpp)
target_link_libraries(ole_tests PRIVATE zdm_test_support)
