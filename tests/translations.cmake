# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# cmake -DLUPDATE=lupdate -DSOURCE_DIR=src -DTRANSLATIONS=translations/vantix -DWORK_DIR=dir
#   -P translations.cmake
# fails if a text of the sources lacks a translation, or a translation its text.

file(GLOB files ${TRANSLATIONS}_*.ts)
if(NOT files)
  message(FATAL_ERROR "No translations ${TRANSLATIONS}_*.ts")
endif()
file(REMOVE_RECURSE ${WORK_DIR})
file(COPY ${files} DESTINATION ${WORK_DIR})
foreach(file ${files})
  get_filename_component(name ${file} NAME)
  execute_process(COMMAND ${LUPDATE} -silent -locations none ${SOURCE_DIR} -ts ${WORK_DIR}/${name}
    RESULT_VARIABLE result)
  if(result)
    message(FATAL_ERROR "${LUPDATE}: ${result}")
  endif()
  # New texts come as unfinished, texts that are no longer there as vanished.
  file(READ ${WORK_DIR}/${name} updated)
  if(updated MATCHES "<translation( type=[^>]*>|/>|></translation>)")
    message(SEND_ERROR "${CMAKE_MATCH_0} in ${name}, see ${WORK_DIR}/${name}")
  endif()
endforeach()
