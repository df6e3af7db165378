# Recompiling what was compiled before is free where ccache is installed.
if(QUILLMARK_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(QUILLMARK_CCACHE_PROGRAM ccache)
  mark_as_advanced(QUILLMARK_CCACHE_PROGRAM)
  if(QUILLMARK_CCACHE_PROGRAM)
    # What a precompiled header defines is part of its content, and no source of ours uses __TIME__.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${QUILLMARK_CCACHE_PROGRAM})
  endif()
endif()

# quillmark_rules: the warnings that every target of ours is built with.
add_library(quillmark_rules INTERFACE)
if(MSVC)
  target_compile_options(quillmark_rules INTERFACE /W4 $<$<BOOL:${QUILLMARK_WERROR}>:/WX> /permissive- /utf-8)
else()
  target_compile_options(quillmark_rules INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                   $<$<BOOL:${QUILLMARK_WERROR}>:-Werror>)
endif()
# Of the folder, not of quillmark_rules: options of a target that leave a check out must come behind these.
if(QUILLMARK_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

# quillmark_precompile(<target> <headers>...): the headers are parsed once for all sources of the target. Each
# source still includes what it uses: without QUILLMARK_PRECOMPILE there is nothing else.
function(quillmark_precompile target)
  if(QUILLMARK_PRECOMPILE)
    target_precompile_headers(${target} PRIVATE ${ARGN})
    # A time in the file would make every build of it another one for ccache.
    if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
      target_compile_options(${target} PRIVATE "SHELL:-Xclang -fno-pch-timestamp")
    endif()
  endif()
endfunction()

# quillmark_optimise_when_shipped(<target>): under sanitizers it is not optimised and compiles in half the time. A release
# and the fuzz targets of long runs are as ever.
function(quillmark_optimise_when_shipped target)
  if(QUILLMARK_SANITIZE)
    target_compile_options(${target} PRIVATE -O0)
  endif()
endfunction()

# The headers that most sources of the layers below the programs include, parsed once for all of them: for those that use no
# Qt; for those that do, which Qt asks to be position-independent; and for those that are optimised when shipped only, as
# precompiled headers must have been.
if(QUILLMARK_PRECOMPILE)
  foreach(kind core qt qt_when_shipped)
    add_library(quillmark_precompiled_${kind} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_SOURCE_DIR}/cmake/Precompiled.cpp)
    target_link_libraries(quillmark_precompiled_${kind} PRIVATE quillmark_rules)
    set(headers <algorithm> <array> <bit> <cstddef> <cstdint> <functional> <limits> <optional> <span> <string>
                <string_view> <utility> <vector>)
    if(kind MATCHES qt)
      target_link_libraries(quillmark_precompiled_${kind} PRIVATE Qt6::Core)
      list(APPEND headers <filesystem> <memory> <QByteArray> <QFileInfo> <QString>)
    endif()
    quillmark_precompile(quillmark_precompiled_${kind} ${headers})
  endforeach()
  quillmark_optimise_when_shipped(quillmark_precompiled_qt_when_shipped)
endif()

# quillmark_share_precompiled(<target> <core|qt|qt_when_shipped>): the target is compiled with those headers.
function(quillmark_share_precompiled target kind)
  if(QUILLMARK_PRECOMPILE)
    if(NOT QUILLMARK_SANITIZE)
      string(REPLACE _when_shipped "" kind ${kind})
    endif()
    target_precompile_headers(${target} REUSE_FROM quillmark_precompiled_${kind})
  endif()
endfunction()

if(QUILLMARK_REACHED)
  add_library(quillmark_not_reached STATIC ${CMAKE_CURRENT_SOURCE_DIR}/tests/support/NotReached.cpp)
endif()

# quillmark_library(<folder> SOURCES <files>... LINK <targets>...): the library of one layer.
function(quillmark_library folder)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(quillmark_${folder} STATIC ${arg_SOURCES})
  target_include_directories(quillmark_${folder} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(quillmark_${folder} PUBLIC ${arg_LINK} PRIVATE quillmark_rules)
  if(QUILLMARK_REACHED)
    target_compile_options(quillmark_${folder} PRIVATE -gline-tables-only
                                                       -fsanitize-coverage=func,inline-8bit-counters,pc-table)
    target_link_libraries(quillmark_${folder} PUBLIC quillmark_not_reached)
  endif()
endfunction()

# quillmark_compile_lightly(<target>): for layers that are much code and run little of it. A release optimises them less;
# under sanitizers they are not optimised, and of the checks for undefined behaviour those are left out that stand at every
# access through a pointer: AddressSanitizer sees the null and the wild ones all the same. They compile in half the time.
function(quillmark_compile_lightly target)
  quillmark_optimise_when_shipped(${target})
  if(QUILLMARK_SANITIZE)
    target_compile_options(${target} PRIVATE -fno-sanitize=null,alignment,object-size,vptr)
  elseif(CMAKE_BUILD_TYPE STREQUAL Release AND NOT MSVC)
    target_compile_options(${target} PRIVATE -O1)
  endif()
endfunction()

# quillmark_program(<name> SOURCES <files>... LINK <targets>...): a program under build/<preset>/bin.
function(quillmark_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINK} quillmark_rules)
  # What is read from files cannot change where calls into libraries go.
  if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    target_link_options(${name} PRIVATE LINKER:-z,relro,-z,now)
  endif()
endfunction()
