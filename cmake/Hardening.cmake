# SPDX-License-Identifier: BSD-3-Clause
# Hardens optimised builds as distributions do: position-independent executables, symbols that are
# resolved at the start and read-only afterwards, and checks of the stack and of buffers. The
# sanitizers and the counters of coverage have checks of their own, or need unoptimised code.
include(CheckPIESupported)
check_pie_supported(OUTPUT_VARIABLE pie_problem LANGUAGES CXX)
if(NOT CMAKE_CXX_LINK_PIE_SUPPORTED)
  message(STATUS "No position-independent executables: ${pie_problem}")
endif()

if(MOODSETD_HARDENING AND NOT MOODSETD_SANITIZE AND NOT MOODSETD_COVERAGE)
  set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  # Other processors do not have these instructions, and their compilers reject the option.
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
    list(APPEND hardening -fcf-protection)
  endif()
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  add_compile_options("$<${optimised}:${hardening}>")
  add_link_options("$<${optimised}:LINKER:-z,relro,-z,now>")
endif()
