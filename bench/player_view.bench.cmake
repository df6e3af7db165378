# What is shown of a subtitle as a player shows it, frame by frame.
quillmark_bench(player_view SOURCES player_view.cpp LINK quillmark_render)
