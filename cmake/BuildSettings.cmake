# SPDX-License-Identifier: BSD-3-Clause
# The compile settings that every target of the project shares, as the target moodsetd-settings.
add_library(moodsetd-settings INTERFACE)
target_compile_features(moodsetd-settings INTERFACE cxx_std_17)
target_include_directories(moodsetd-settings INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(moodsetd-settings INTERFACE
  # GLib needs it, and all sources that share precompiled headers must have the same options.
  -pthread
  -Wall -Wextra -Wpedantic -Wcast-align -Wconversion -Wdeprecated -Wduplicated-cond -Wlogical-op
  -Wnon-virtual-dtor -Wnull-dereference -Woverloaded-virtual -Wshadow -Wundef
  $<$<BOOL:${MOODSETD_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(moodsetd-settings INTERFACE
    -Wno-unknown-warning-option
    # Qt's macros for logging leave their arguments out.
    -Wno-gnu-zero-variadic-macro-arguments)
endif()
target_compile_definitions(moodsetd-settings INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
  QT_DISABLE_DEPRECATED_BEFORE=0x050f00)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(MOODSETD_SANITIZE)
  target_compile_options(moodsetd-settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
  target_link_options(moodsetd-settings INTERFACE -fsanitize=address,undefined)
endif()
if(MOODSETD_COVERAGE)
  # Without any optimisation, many tests would exceed their time limits.
  target_compile_options(moodsetd-settings INTERFACE --coverage -O1)
  target_link_options(moodsetd-settings INTERFACE --coverage)
endif()
if(MOODSETD_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "MOODSETD_FUZZ needs clang, for libFuzzer")
  endif()
  target_compile_options(moodsetd-settings INTERFACE -fsanitize=fuzzer-no-link)
endif()
