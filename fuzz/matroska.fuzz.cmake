if(QUILLMARK_MATROSKA)
  quillmark_fuzz(matroska LINK quillmark_containers)
endif()
