quillmark_bench(png SOURCES png.cpp LINK quillmark_render)
