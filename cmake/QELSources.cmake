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

# Defines the target simdjson::simdjson where its sources are there.
function(qel_add_simdjson)
  qel_unpack_sources(simdjson root)
  if(NOT root)
    return()
  endif()
  add_library(qel_simdjson STATIC "${root}/singleheader/simdjson.cpp")
  add_library(simdjson::simdjson ALIAS qel_simdjson)
  target_include_directories(qel_simdjson SYSTEM PUBLIC "${root}/singleheader")
  qel_leave_as_it_is(qel_simdjson)
endfunction()

# Defines the target <package>::<package> of a library that is nothing but the folder of headers
# which <header> lies in: by its package, or where the system is another, by the headers, which are
# the same for all. A folder of their own keeps the other headers of this system away.
function(qel_find_headers package header)
  if(NOT CMAKE_CROSSCOMPILING)
    find_package(${package} REQUIRED)
    return()
  endif()
  find_path(QEL_${package}_INCLUDE_DIR ${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  cmake_path(GET header PARENT_PATH folder)
  set(include "${PROJECT_BINARY_DIR}/headers/${package}")
  file(MAKE_DIRECTORY "${include}")
  file(CREATE_LINK "${QEL_${package}_INCLUDE_DIR}/${folder}" "${include}/${folder}" SYMBOLIC)
  add_library(${package}::${package} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${package}::${package} SYSTEM INTERFACE "${include}")
endfunction()
