zdm_add_fuzz(Variant)
