quillmark_fuzz(ifo LINK quillmark_containers)
