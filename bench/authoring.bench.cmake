if(QUILLMARK_AUTHORING)
  quillmark_bench(authoring SOURCES authoring.cpp LINK quillmark_render quillmark_containers)
endif()
