// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// The addresses that the daemon's unit lets it have, in bytes; 0 if it names no number.
qint64 unitAddressSpace();
