# Installs the library with what others need to find it: a CMake package and a pkg-config file.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QEL")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

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
configure_file(cmake/qel.pc.in "${PROJECT_BINARY_DIR}/qel.pc" @ONLY)

install(
  TARGETS qel
  EXPORT QELTargets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(EXPORT QELTargets NAMESPACE QEL:: DESTINATION "${package_dir}")
install(FILES "${PROJECT_BINARY_DIR}/QELConfig.cmake" "${PROJECT_BINARY_DIR}/QELConfigVersion.cmake"
        DESTINATION "${package_dir}")
install(FILES "${PROJECT_BINARY_DIR}/qel.pc" DESTINATION "${pkgconfig_dir}")
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
