if(NOT WIN32)
  zdm_add_bench(Copy_bench Copy_bench.cpp)
  target_link_libraries(Copy_bench PRIVATE zdm::document)
  # Its malloc and free are found before those of the C library.
  set_target_properties(Copy_bench PROPERTIES ENABLE_EXPORTS ON)
endif()
