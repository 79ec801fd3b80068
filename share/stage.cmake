# Fills the program directory STAGE with the programs EDITOR and ENGINE, the log GAMES_LOG and the
# files of SHARE. A file that the user may edit is replaced only while it is as it was staged: the
# folder RECORDS remembers a checksum of each.

file(MAKE_DIRECTORY ${STAGE})
file(COPY ${EDITOR} ${ENGINE} DESTINATION ${STAGE})

function(stage_editable source name)
  set(target ${STAGE}/${name})
  set(record ${RECORDS}/${name}.sha256)
  file(SHA256 ${source} new)
  if(EXISTS ${target})
    file(SHA256 ${target} present)
    set(staged "")
    if(EXISTS ${record})
      file(READ ${record} staged)
    endif()
    if(present STREQUAL new)
      file(WRITE ${record} ${new})
      return()
    endif()
    if(NOT present STREQUAL staged)
      message(STATUS "Kept your ${name}")
      return()
    endif()
  endif()
  file(COPY_FILE ${source} ${target})
  file(WRITE ${record} ${new})
endfunction()

stage_editable(${GAMES_LOG} games.log)
file(GLOB_RECURSE names RELATIVE ${SHARE} ${SHARE}/templates/* ${SHARE}/*.txt ${SHARE}/*.TXT
  ${SHARE}/morvane.cfg)
list(REMOVE_ITEM names CMakeLists.txt)
foreach(name IN LISTS names)
  cmake_path(GET name PARENT_PATH folder)
  file(MAKE_DIRECTORY ${STAGE}/${folder})
  stage_editable(${SHARE}/${name} ${name})
endforeach()
