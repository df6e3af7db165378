quillmark_bench(review SOURCES review.cpp LINK quillmark_app)
