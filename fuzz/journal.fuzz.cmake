quillmark_fuzz(edit_journal LINK quillmark_sup)
