zdm_add_fuzz(Salvage)
target_link_libraries(Salvage_fuzz PRIVATE zdm::document)
zdm_add_fuzz(Document)
target_link_libraries(Document_fuzz PRIVATE zdm::document)
