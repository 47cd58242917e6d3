# SPDX-License-Identifier: BSD-3-Clause
# How things are installed. The prefix may be given at install time (cmake --install --prefix), so
# nothing here may depend on the one of the configuration.

# Installed programs find the library beside them. A package for /usr needs no such path:
# -DCMAKE_SKIP_INSTALL_RPATH=ON.
file(RELATIVE_PATH lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set(CMAKE_INSTALL_RPATH $ORIGIN/${lib_from_bin})

# moodsetd_install_template(TEMPLATE DESTINATION)
#
# Installs the file TEMPLATE.in, filled in for the prefix of the installation. It can name the
# variables of TemplateVariables.cmake. DESTINATION is relative to the prefix. It can begin with
# UNIT_DIR, which stands for the directory of user units, or with CONFIG_DIR.
function(moodsetd_install_template template destination)
  cmake_path(GET template FILENAME name)
  install(CODE "
    set(bindir \"${CMAKE_INSTALL_BINDIR}\")
    set(libdir \"${CMAKE_INSTALL_LIBDIR}\")
    set(datadir \"${CMAKE_INSTALL_DATADIR}\")
    set(sysconfdir \"${CMAKE_INSTALL_SYSCONFDIR}\")
    set(MOODSETD_ADDRESS_SPACE \"${MOODSETD_ADDRESS_SPACE}\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/TemplateVariables.cmake\")
    set(directory \"${destination}\")
    string(REGEX REPLACE ^UNIT_DIR \"\${MOODSETD_UNIT_DIR}\" directory \"\${directory}\")
    string(REGEX REPLACE ^CONFIG_DIR \"\${MOODSETD_CONFIG_DIR}\" directory \"\${directory}\")
    cmake_path(ABSOLUTE_PATH directory BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
    set(installed \"\${directory}/${name}\")
    message(STATUS \"Installing: \$ENV{DESTDIR}\${installed}\")
    configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/${template}.in\" \"\$ENV{DESTDIR}\${installed}\"
      @ONLY NO_SOURCE_PERMISSIONS)
    list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${installed}\")")
endfunction()

# Call it last, because it prints what a person has to do at the end of an installation.
function(moodsetd_finish_installation)
  install(CODE "
    set(datadir \"${CMAKE_INSTALL_DATADIR}\")
    set(libdir \"${CMAKE_INSTALL_LIBDIR}\")
    set(sysconfdir \"${CMAKE_INSTALL_SYSCONFDIR}\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/AfterInstallation.cmake\")")
  add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
      -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
    COMMENT "Removing what the last installation has installed")
endfunction()
