if(QUILLMARK_VOBSUB)
  quillmark_fuzz(vobsub_index LINK quillmark_containers)
  quillmark_fuzz(vobsub_pair LINK quillmark_containers)
endif()
