# Problems found between events, the filter of the list, the strip of the film's time.
if(QUILLMARK_GUI)
  quillmark_bench(problems SOURCES problems.cpp LINK quillmark_app)
endif()
