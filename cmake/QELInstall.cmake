# Installs the library with what others need to find it: a CMake package and pkg-config files.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QEL")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# The parser of HTML, where it is not a part of the reader.
set(QEL_html_needs_gumbo FALSE)
set(QEL_HTML_PC_PRIVATE)
if(NOT TARGET qel_gumbo)
  set(QEL_HTML_PC_PRIVATE gumbo)
  if(NOT BUILD_SHARED_LIBS)
    set(QEL_html_needs_gumbo TRUE)
  endif()
endif()
configure_package_config_file(cmake/QELConfig.cmake.in "${PROJECT_BINARY_DIR}/QELConfig.cmake"
                              INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/QELConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)

# The prefix is written relative to the file itself, so that the installed tree can be moved.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(QEL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  string(REGEX REPLACE "[^/]+" ".." up "${pkgconfig_dir}")
  set(QEL_PC_PREFIX "\${pcfiledir}/${up}")
endif()
cmake_path(APPEND QEL_PC_LIBDIR "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND QEL_PC_INCLUDEDIR "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
set(modules qel)
if(QEL_HAS_HTML)
  list(APPEND modules qel-html)
endif()
if(QEL_HAS_CAPI)
  list(APPEND modules qel-capi)
endif()
if(QEL_HAS_QT)
  list(APPEND modules qel-qt)
endif()
set(QEL_QT_PC_PRIVATE "")
if(QEL_HAS_HTML)
  list(APPEND QEL_QT_PC_PRIVATE "qel-html = ${PROJECT_VERSION}")
endif()
if(QEL_HAS_ENCHANT)
  list(APPEND QEL_QT_PC_PRIVATE enchant-2)
endif()
list(JOIN QEL_QT_PC_PRIVATE ", " QEL_QT_PC_PRIVATE)
foreach(module IN LISTS modules)
  configure_file(cmake/${module}.pc.in "${PROJECT_BINARY_DIR}/${module}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${module}.pc" DESTINATION "${pkgconfig_dir}")
endforeach()

install(
  TARGETS qel
  EXPORT QELTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  FILE_SET generated_headers DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT QELTargets NAMESPACE QEL:: DESTINATION "${package_dir}")
install(FILES "${PROJECT_BINARY_DIR}/QELConfig.cmake" "${PROJECT_BINARY_DIR}/QELConfigVersion.cmake"
        DESTINATION "${package_dir}")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")

# Builds what is installed, and nothing else. Other folders add to it.
function(qel_add_installed_target)
  add_custom_target(qel_installed)
  foreach(target IN ITEMS qel qel_html qel_capi qel_qt qelcom qel_program qelforms)
    if(TARGET ${target})
      add_dependencies(qel_installed ${target})
    endif()
  endforeach()
endfunction()
cmake_language(DEFER CALL qel_add_installed_target)
