// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVariantMap>

/// Attributes of a moodset in the form that the daemon takes.
struct CheckedAttributes
{
    QVariantMap values;
    /// Why one of them is invalid, in one line; empty if all are valid.
    QString error;
};

/// Converts values of QML to values that the daemon takes: a colour to its text, a number to an
/// integer, a URL to its text. Everything else is invalid, because the daemon stores any value that
/// it gets, and because a value that the bus cannot carry would end this process.
CheckedAttributes checkedAttributes(const QVariant& attributes);
