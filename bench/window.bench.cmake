# The window as its user feels it: start to first paint, and one step to the next subtitle.
if(QUILLMARK_GUI)
  quillmark_bench(window SOURCES window.cpp LINK quillmark_app)
  target_compile_definitions(bench_window PRIVATE QUILLMARK_SAMPLES="${PROJECT_SOURCE_DIR}/samples")
endif()
