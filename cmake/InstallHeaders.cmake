# Runs when the tree is installed, so that a header that has just been included is not forgotten. Copies the headers of
# the library to VYN_HEADER_FOLDER: those that export something, and all that these include. The formats' own headers
# need an SDK and no application.

cmake_policy(VERSION 3.25)

# The file in the tree that "vyncore/…" and "vynaudiofilterhost/…" mean.
function(find_header name result)
  if(name MATCHES "^vynaudiofilterhost/(.*)$")
    set(${result} ${VYN_SOURCE_DIR}/host/src/${CMAKE_MATCH_1} PARENT_SCOPE)
  else()
    set(${result} ${VYN_SOURCE_DIR}/platform/${name} PARENT_SCOPE)
  endif()
endfunction()

# The names under which headers that export something are included.
function(list_exporting_headers result)
  file(GLOB_RECURSE candidates RELATIVE ${VYN_SOURCE_DIR} ${VYN_SOURCE_DIR}/platform/*.h ${VYN_SOURCE_DIR}/host/src/*.h)
  list(FILTER candidates EXCLUDE REGEX "^platform/os/|^host/src/VST3?/")
  foreach(candidate IN LISTS candidates)
    file(STRINGS ${VYN_SOURCE_DIR}/${candidate} exports REGEX "VYN_API" LIMIT_COUNT 1)
    if(exports)
      string(REGEX REPLACE "^platform/" "" name ${candidate})
      string(REGEX REPLACE "^host/src/" "vynaudiofilterhost/" name ${name})
      list(APPEND names ${name})
    endif()
  endforeach()
  set(${result} ${names} PARENT_SCOPE)
endfunction()

list_exporting_headers(waiting)
set(installed)
while(waiting)
  list(POP_FRONT waiting name)
  if(NOT name IN_LIST installed)
    list(APPEND installed ${name})
    find_header(${name} header)
    cmake_path(GET name PARENT_PATH folder)
    file(INSTALL ${header} DESTINATION ${VYN_HEADER_FOLDER}/${folder})
    file(STRINGS ${header} includes REGEX "^#include \"")
    list(TRANSFORM includes REPLACE "^#include \"([^\"]+)\".*" "\\1")
    list(APPEND waiting ${includes})
  endif()
endwhile()
