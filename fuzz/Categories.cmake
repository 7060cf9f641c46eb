foreach(name IN ITEMS Category CategoryReltn CategoryReltnMap)
  zdm_add_fuzz(${name})
  target_link_libraries(${name}_fuzz PRIVATE zdm_test_support)
endforeach()
