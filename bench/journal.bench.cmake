# The journal of unsaved edits: writing an edit down, looking for a journal while a stream is loaded.
if(QUILLMARK_GUI)
  quillmark_bench(journal SOURCES journal.cpp Film.cpp LINK quillmark_app)
endif()
