target_sources(zdm PRIVATE
  CStringW.cpp)
if(NOT WIN32)
  target_sources(zdm PRIVATE
    portable/Bstr.cpp
    portable/Guid.cpp
    portable/SafeArray.cpp
    portable/StringCollator.cpp
    portable/StringCompare.cpp
    portable/TaskMemory.cpp)
endif()
