// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVariantMap>

/// Attributes of a moodset in the form that the daemon takes.
struct CheckedAttributes
{
    QVariantMap values;
    /// Why one of them makes no sense, in one line; empty if all do.
    QString error;
};

/// Turns values as QML has them into those that the daemon takes: a colour into its text, a number
/// into an integer, a URL into its text. The daemon stores whatever it gets, and a value that the
/// bus cannot carry would end this process, so everything else is refused.
CheckedAttributes checkedAttributes(const QVariant& attributes);
