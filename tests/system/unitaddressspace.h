// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// The address space that the daemon's unit allows, in bytes; 0 if the unit gives no number.
qint64 unitAddressSpace();
