# The command line program as a child process, beside an empty program that the same libraries are linked to.
if(QUILLMARK_CLI)
  quillmark_program(bench_cli_empty SOURCES cli_empty.cpp LINK quillmark_cli)
  target_link_options(bench_cli_empty PRIVATE LINKER:--no-as-needed)
  quillmark_bench(cli SOURCES cli.cpp LINK quillmark_render)
  target_compile_definitions(bench_cli PRIVATE QUILLMARK_CLI="$<TARGET_FILE:quillmark-cli>"
                                               QUILLMARK_EMPTY="$<TARGET_FILE:bench_cli_empty>")
  add_dependencies(bench_cli quillmark-cli bench_cli_empty)
endif()
