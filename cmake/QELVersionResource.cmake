# What Windows shows as the properties of a program or a library.

file(STRINGS "${PROJECT_SOURCE_DIR}/LICENSE" copyright REGEX "^Copyright" LIMIT_COUNT 1)

# qel_add_version_resource(<target> <file name> <description> [<name of a value>]...): on other
# systems nothing. The named values are there, and empty.
function(qel_add_version_resource target file_name description)
  if(NOT WIN32)
    return()
  endif()
  set(file_type VFT_DLL)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    set(file_type VFT_APP)
  endif()
  set(extra_values)
  foreach(name IN LISTS ARGN)
    string(APPEND extra_values "      VALUE \"${name}\", \"\"\n")
  endforeach()
  set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/version.rc.in" "${resource}" @ONLY)
  target_sources(${target} PRIVATE "${resource}")
endfunction()
