# Editing: assigning codes to every subtitle, and saving the stream.
quillmark_bench(edit SOURCES edit.cpp LINK quillmark_sup quillmark_files)
