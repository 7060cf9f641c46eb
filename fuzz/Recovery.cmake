foreach(target IN ITEMS ProxyEmbedded ReadStream)
  zdm_add_fuzz(${target})
  target_link_libraries(${target}_fuzz PRIVATE zdm_test_support)
endforeach()
