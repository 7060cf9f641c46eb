target_sources(zdm PRIVATE VariantStream.cpp)
if(NOT WIN32)
  target_sources(zdm PRIVATE
    portable/Variant.cpp
    portable/VariantCompare.cpp
    portable/VariantConvert.cpp
    portable/VariantDate.cpp
    portable/VariantDecimal.cpp
    portable/VariantNumberText.cpp)
endif()
