// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVariantMap>

/// A client's attributes with the maps inside them, which arrive in the bus's own form, made plain,
/// at any depth. A list or a structure inside a variant becomes an empty map; all other values stay
/// as they are.
QVariantMap plainAttributes(const QVariantMap& attributes);
