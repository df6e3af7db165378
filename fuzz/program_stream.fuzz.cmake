if(QUILLMARK_PROGRAM_STREAM)
  quillmark_fuzz(program_stream LINK quillmark_containers)
endif()
