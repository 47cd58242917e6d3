# SPDX-License-Identifier: BSD-3-Clause
# Prints what a person has to do after an installation. Packages do it by themselves.
if(NOT "$ENV{DESTDIR}" STREQUAL "")
  return()
endif()
cmake_path(ABSOLUTE_PATH datadir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
cmake_path(ABSOLUTE_PATH libdir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
cmake_path(ABSOLUTE_PATH sysconfdir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
set(steps
  "update-mime-database ${datadir}/mime"
  "systemctl --user daemon-reload")
if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
  # Only the programs of this project find the library without the linker's cache.
  list(PREPEND steps "ldconfig")
endif()
list(JOIN steps "\n    " steps)
message("To finish the installation, run\n    ${steps}")
if(NOT CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
  message("Sessions find the unit, the bus service and the file types only if their XDG_DATA_DIRS (or "
    "XDG_DATA_HOME) has ${datadir}, and the autostart file if their XDG_CONFIG_DIRS has "
    "${sysconfdir}/xdg. Other programs find the library in ${libdir} if their LD_LIBRARY_PATH or "
    "RPATH has it. docs/install.md says more.")
endif()
