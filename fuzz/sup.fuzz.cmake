quillmark_fuzz(stream_edit LINK quillmark_sup)
quillmark_fuzz(stream_reader LINK quillmark_sup)
quillmark_fuzz(control_walk LINK quillmark_sup)
