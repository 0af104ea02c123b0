# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# cmake -DROOT=... -P map.cmake: whether each file and folder that CONTRIBUTING.md names under
# "Where things are" exists, and each source of src/ stands there.

cmake_minimum_required(VERSION 3.21)

file(READ ${ROOT}/CONTRIBUTING.md text)
string(REPLACE ";" "," text "${text}")
string(REGEX MATCH "\n## Where things are\n.*" text "${text}")
string(REGEX REPLACE "\n## Style\n.*" "" text "${text}")
if(text STREQUAL "")
  message(FATAL_ERROR "CONTRIBUTING.md has no map")
endif()

set(bad "")
set(mapped "")
string(REGEX MATCHALL "`[a-z]+/[^` ]*`" names "${text}")
foreach(name IN LISTS names)
  string(REPLACE "`" "" name ${name})
  if(name MATCHES "/$")
    if(NOT IS_DIRECTORY ${ROOT}/${name})
      list(APPEND bad "no folder ${name}")
    endif()
    continue()
  endif()
  # A name for a header, its private header and its source; not for a folder's files.
  string(REGEX REPLACE "^(.*[^/])\\*$" "\\1.h;\\1_p.h;\\1.cpp" files ${name})
  set(found FALSE)
  foreach(file IN LISTS files)
    if(EXISTS ${ROOT}/${file} AND NOT IS_DIRECTORY ${ROOT}/${file})
      set(found TRUE)
      list(APPEND mapped ${file})
    endif()
  endforeach()
  if(NOT found)
    list(APPEND bad "no file ${name}")
  endif()
endforeach()

file(GLOB_RECURSE sources RELATIVE ${ROOT} ${ROOT}/src/*.h ${ROOT}/src/*.cpp)
list(LENGTH sources count)
if(count EQUAL 0)
  list(APPEND bad "no sources")
endif()
foreach(file IN LISTS sources)
  if(NOT file IN_LIST mapped)
    list(APPEND bad "${file} is not in the map")
  endif()
endforeach()

if(bad)
  list(JOIN bad "\n  " bad)
  message(FATAL_ERROR "CONTRIBUTING.md, \"Where things are\":\n  ${bad}")
endif()
