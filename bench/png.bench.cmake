quillmark_bench(png SOURCES png.cpp LINK quillmark_render)
target_include_directories(bench_png SYSTEM PRIVATE ${LIBDEFLATE_INCLUDE_DIR})
target_link_libraries(bench_png PRIVATE ${LIBDEFLATE_LIBRARY})
