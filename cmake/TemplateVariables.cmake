# SPDX-License-Identifier: BSD-3-Clause
# The variables of templates of installed files, for the prefix CMAKE_INSTALL_PREFIX with its
# subdirectories bindir, libdir, datadir and sysconfdir:
#   MOODSETD_BINDIR      the absolute directory of the programs
#   MOODSETD_LIBDIR      the absolute directory of the library
#   MOODSETD_DATADIR     the absolute directory of data
#   MOODSETD_DATA_DIRS   the directories to put first in XDG_DATA_DIRS
#   MOODSETD_UNIT_DIR    the directory of user units, relative to the prefix
#   MOODSETD_CONFIG_DIR  the directory of configuration, absolute
cmake_path(ABSOLUTE_PATH bindir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
  OUTPUT_VARIABLE MOODSETD_BINDIR)
cmake_path(ABSOLUTE_PATH libdir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
  OUTPUT_VARIABLE MOODSETD_LIBDIR)
cmake_path(ABSOLUTE_PATH datadir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
  OUTPUT_VARIABLE MOODSETD_DATADIR)
cmake_path(ABSOLUTE_PATH sysconfdir BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
  OUTPUT_VARIABLE MOODSETD_CONFIG_DIR)
set(MOODSETD_DATA_DIRS "${MOODSETD_DATADIR}/moodsetd")
if(CMAKE_INSTALL_PREFIX MATCHES "^/usr(/local)?/?$")
  set(MOODSETD_UNIT_DIR lib/systemd/user)
  # Sessions look for autostart files in /etc/xdg alone.
  if(NOT IS_ABSOLUTE "${sysconfdir}")
    set(MOODSETD_CONFIG_DIR "/${sysconfdir}")
  endif()
else()
  # There, user managers look for units in the directories of XDG_DATA_DIRS and XDG_DATA_HOME, which
  # the types of files and the profiles' defaults need as well.
  set(MOODSETD_UNIT_DIR share/systemd/user)
  string(APPEND MOODSETD_DATA_DIRS ":${MOODSETD_DATADIR}")
endif()
