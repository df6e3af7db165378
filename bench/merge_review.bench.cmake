quillmark_bench(merge_review SOURCES merge_review.cpp LINK quillmark_render)
