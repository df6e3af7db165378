quillmark_bench(merge SOURCES merge.cpp Film.cpp LINK quillmark_render)
