zdm_add_fuzz(CompoundFile)
