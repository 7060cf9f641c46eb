zdm_add_fuzz(Bstr)
