# Cross-built programs run under Wine through a wrapper that sets a prefix and a time limit.
if(CMAKE_CROSSCOMPILING AND WIN32)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/cmake/run-under-wine)
endif()
