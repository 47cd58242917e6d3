# SPDX-License-Identifier: BSD-3-Clause
# Installs the content library with a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MoodsetContent)
install(TARGETS moodset-content EXPORT MoodsetContentTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/moodset-content)
install(EXPORT MoodsetContentTargets NAMESPACE MoodsetContent:: DESTINATION ${package_dir})

configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/MoodsetContentConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/MoodsetContentConfig.cmake
  INSTALL_DESTINATION ${package_dir})
# This is the same as for the soname, which has the major version.
write_basic_package_version_file(
  ${CMAKE_CURRENT_BINARY_DIR}/MoodsetContentConfigVersion.cmake COMPATIBILITY SameMajorVersion)
# The path is relative to this file, so that the library can be installed to any prefix.
file(RELATIVE_PATH prefix_from_pkgconfig
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(
  ${CMAKE_CURRENT_LIST_DIR}/moodset-content.pc.in ${CMAKE_CURRENT_BINARY_DIR}/moodset-content.pc
  @ONLY)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/MoodsetContentConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/MoodsetContentConfigVersion.cmake
  DESTINATION ${package_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/moodset-content.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
