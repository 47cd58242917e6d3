// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The content of a portals.conf for newer frontends of the portal: the accent colour comes from
/// the bridge, and everything else from the gtk backend.
QString portalsConf();

/// Writes it for the user, unless the user has such a file. Returns what went wrong, or an empty
/// text.
QString installPortalsConf();

/// The path of the user's file.
QString portalsConfPath();
