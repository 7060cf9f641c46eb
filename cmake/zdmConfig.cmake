include(${CMAKE_CURRENT_LIST_DIR}/zdmTargets.cmake)
