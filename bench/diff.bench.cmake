quillmark_bench(diff SOURCES diff.cpp LINK quillmark_render)
