# The list of the subtitles: what it adds to opening, turning its pages, what a typed character costs in it.
if(QUILLMARK_GUI)
  quillmark_bench(list SOURCES list.cpp LINK quillmark_app)
endif()
