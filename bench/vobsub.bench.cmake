# VobSub pairs and program streams.
if(QUILLMARK_VOBSUB AND QUILLMARK_PROGRAM_STREAM)
  quillmark_bench(vobsub SOURCES vobsub.cpp LINK quillmark_containers $<TARGET_NAME_IF_EXISTS:quillmark_bench_lavf>)
endif()
