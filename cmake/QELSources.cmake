# Libraries built from the sources that scripts/fetch-sources leaves in a folder, for systems that
# have no packages of them.

set(QEL_SOURCES_DIR "${PROJECT_SOURCE_DIR}/build/sources"
    CACHE PATH "Folder with the archives of other libraries' sources")

# Unpacks the sources of the package in that folder, once. The variable gets their folder, or
# nothing where there is no archive.
function(qel_unpack_sources package variable)
  file(GLOB archive "${QEL_SOURCES_DIR}/${package}_*.orig.tar.*")
  set(${variable} "" PARENT_SCOPE)
  if(NOT archive)
    return()
  endif()
  list(GET archive -1 archive)
  string(REGEX REPLACE ".*/([^/_]*)_([0-9.]*).*" "\\1-\\2" name "${archive}")
  set(folder "${PROJECT_BINARY_DIR}/sources/${name}")
  if(NOT EXISTS "${folder}")
    file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${folder}.part")
    file(RENAME "${folder}.part" "${folder}")
  endif()
  file(GLOB top "${folder}/*")
  set(${variable} "${top}" PARENT_SCOPE)
endfunction()

# Defines the target qel_gumbo, objects of the parser of HTML, and QEL_GUMBO_FOUND.
macro(qel_add_gumbo)
  qel_unpack_sources(ruby-nokogiri QEL_GUMBO_ROOT)
  set(QEL_GUMBO_FOUND FALSE)
  if(QEL_GUMBO_ROOT)
    set(QEL_GUMBO_FOUND TRUE)
    enable_language(C)
    file(GLOB QEL_GUMBO_FILES "${QEL_GUMBO_ROOT}/gumbo-parser/src/*.c")
    add_library(qel_gumbo OBJECT ${QEL_GUMBO_FILES})
    target_include_directories(qel_gumbo INTERFACE "${QEL_GUMBO_ROOT}/gumbo-parser/src")
    qel_leave_as_it_is(qel_gumbo)
  endif()
endmacro()

# The code of others: neither its warnings nor its style are ours.
function(qel_leave_as_it_is target)
  target_compile_options(${target} PRIVATE -w)
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE ON UNITY_BUILD OFF)
endfunction()
