zdm_add_fuzz(Drawing)
target_link_libraries(Drawing_fuzz PRIVATE zdm::drawing zdm_test_support)
