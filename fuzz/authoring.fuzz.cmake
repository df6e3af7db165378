if(QUILLMARK_AUTHORING)
  quillmark_fuzz(authoring_xml LINK quillmark_containers)
endif()
