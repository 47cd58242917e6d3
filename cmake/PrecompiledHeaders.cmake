# SPDX-License-Identifier: BSD-3-Clause
# Headers of Qt and the standard library that are parsed only once for all sources. Parsing them takes
# half of the time of compiling. Sources must still include what they need; a build with
# CMAKE_DISABLE_PRECOMPILE_HEADERS shows what is missing.

# moodsetd_add_precompiled_headers(name HEADERS header... [MODULES module...])
#
# Compiles headers with the flags and definitions of the current directory. With GCC, the targets that
# use them must have the same definitions, and may have others only if the headers do not use these.
# Therefore Qt's modules with the headers are not linked; only their include directories are used.
function(moodsetd_add_precompiled_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;MODULES")
  list(TRANSFORM arg_HEADERS REPLACE "(.+)" "<\\1>")
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp
    CONTENT "// The target of precompiled headers needs a source.\n")
  add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE Qt5::Core moodsetd-settings)
  foreach(module IN LISTS arg_MODULES)
    target_include_directories(${name} SYSTEM PRIVATE ${Qt5${module}_INCLUDE_DIRS})
  endforeach()
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# moodsetd_precompile(folder name): makes all targets of a directory, and below it, use the headers
# with this name.
function(moodsetd_precompile folder name)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    if(type MATCHES "EXECUTABLE|(STATIC|SHARED|OBJECT)_LIBRARY" AND NOT target STREQUAL name)
      target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
  foreach(below IN LISTS folders)
    moodsetd_precompile(${below} ${name})
  endforeach()
endfunction()
