if(NOT WIN32)
  target_sources(zdm PRIVATE
    portable/Guid.cpp)
endif()
