// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVariantMap>

/// Converts a client's attributes, and the maps inside them at any depth, from the bus's own form
/// to plain values. A list or a structure inside a variant becomes an empty map. All other values
/// stay as they are.
///
/// An attribute that is larger than 64 KiB is left out, with a warning: the bus allows values that
/// are large enough to fill the memory wherever they are kept.
QVariantMap plainAttributes(const QVariantMap& attributes);
