quillmark_fuzz(recipe LINK quillmark_recipe)
