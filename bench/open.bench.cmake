quillmark_bench(open SOURCES open.cpp Film.cpp LINK quillmark_sup)
