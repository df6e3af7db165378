quillmark_bench(encode SOURCES encode.cpp LINK quillmark_render $<TARGET_NAME_IF_EXISTS:quillmark_bench_lavc>)
