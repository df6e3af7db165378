quillmark_bench(merge SOURCES merge.cpp LINK quillmark_render)
