// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gvariantpointer.h"

#include <QVariant>

/// `value` as the key/value store's type: booleans as b, integers as i, u, x or t by their width
/// and sign, floating-point numbers as d, QString as s, QStringList as as, QByteArray as ay,
/// QVariantMap as a{sv} and QVariantList as av, the last two with elements of these types. Null for
/// any other type, for an invalid element and for a text with a NUL in it, which the store's would
/// end at.
GVariantPointer toGVariant(const QVariant& value);

/// The reverse: besides those, integers of other widths come as the next wider type of the list, a
/// dictionary with text keys as a QVariantMap whatever its values, any other array as a
/// QVariantList. An invalid variant for any other type. `value` must not be null.
QVariant fromGVariant(GVariant* value);
