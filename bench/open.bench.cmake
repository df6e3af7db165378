quillmark_bench(open SOURCES open.cpp LINK quillmark_sup)
