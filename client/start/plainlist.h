// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <optional>

/// Prints the list of moodsets if the arguments ask for a list for people and nothing else, and
/// returns the exit status. Returns nothing, and prints nothing, if they ask for anything else, or
/// if something is not as usual: there is no database, or a colour in it is no "#aarrggbb".
std::optional<int> printPlainList(int argc, char** argv);
