quillmark_fuzz(stream_fix LINK quillmark_sup)
