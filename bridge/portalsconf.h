// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The content of a portals.conf with which newer frontends of the portal take the accent colour
/// from the bridge, and all else from the gtk backend.
QString portalsConf();

/// Writes it as the user's own, unless the user has one. Returns what went wrong, or an empty text.
QString installPortalsConf();

/// The path of the user's own.
QString portalsConfPath();
