# SPDX-License-Identifier: BSD-3-Clause
# Plays the libraries of another platform, for MOODSETD_PLATFORM. They have only the interfaces that the
# daemon and the clients use, and they do almost nothing.
foreach(name Config Feedback Metadata Profile Wallpaper)
  string(TOLOWER standin-${name} target)
  add_library(${target} STATIC)
  add_library(Platform::${name} ALIAS ${target})
  target_include_directories(${target} SYSTEM INTERFACE ${CMAKE_CURRENT_LIST_DIR})
  target_link_libraries(${target} PUBLIC Qt5::Core PRIVATE moodsetd-settings)
endforeach()
target_sources(standin-config PRIVATE ${CMAKE_CURRENT_LIST_DIR}/mgconfitem.cpp)
target_sources(standin-feedback PRIVATE ${CMAKE_CURRENT_LIST_DIR}/ngfclient.cpp)
set_target_properties(standin-config standin-feedback PROPERTIES AUTOMOC ON)
target_sources(standin-metadata PRIVATE ${CMAKE_CURRENT_LIST_DIR}/quillmetadata.cpp)
target_sources(standin-profile PRIVATE ${CMAKE_CURRENT_LIST_DIR}/profile.cpp)
target_sources(standin-wallpaper PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/colorlookup.cpp ${CMAKE_CURRENT_LIST_DIR}/velmoorzerlinbackground.cpp)
target_link_libraries(standin-wallpaper PUBLIC Qt5::Gui)
