// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "gvariantpointer.h"

#include <QVariant>

/// Converts `value` to the store's type: bool to b, integers to i, u, x or t by their size and
/// sign, floating-point numbers to d, QString to s, QStringList to as, QByteArray to ay,
/// QVariantMap to a{sv} and QVariantList to av. The elements of maps and lists must have these
/// types, too. Null for any other type, for an invalid element, and for a text that contains a NUL,
/// because the store's texts end at a NUL.
GVariantPointer toGVariant(const QVariant& value);

/// Converts back. Integers of other sizes become the next larger type of the list, a dictionary
/// with text keys becomes a QVariantMap whatever its values are, and any other array becomes a
/// QVariantList. Any other type gives an invalid variant. `value` must not be null.
QVariant fromGVariant(GVariant* value);
