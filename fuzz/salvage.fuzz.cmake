quillmark_fuzz(salvage LINK quillmark_sup)
