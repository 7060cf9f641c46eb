target_sources(ole_tests PRIVATE
  VariantCompare_test.cpp
  VariantConvert_test.cpp
  VariantStream_test.cpp
  Variant_test.cpp)
