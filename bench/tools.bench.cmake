# The tools on a long stream, each beside a plain pass that writes the same bytes at known offsets.
quillmark_bench(tools SOURCES tools.cpp LINK quillmark_sup)
