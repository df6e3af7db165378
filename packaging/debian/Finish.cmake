# Run by cpack on the folder that a Debian package is made from: what Debian's rules ask of it beyond what is installed
# elsewhere. Its copyright file stands for the licence; manual pages and lists of changes are compressed without the
# time at which that was done.

set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)
set(doc ${share}/doc/quillmark)

file(REMOVE ${doc}/LICENSE)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/copyright ${CMAKE_CURRENT_LIST_DIR}/changelog DESTINATION ${doc}
     FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

file(GLOB pages ${share}/man/man1/*.1)
execute_process(COMMAND gzip -9n ${pages} ${doc}/changelog ${doc}/CHANGELOG.md COMMAND_ERROR_IS_FATAL ANY)
