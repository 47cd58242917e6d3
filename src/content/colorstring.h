// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"

#include <QColor>
#include <QString>

/// A colour as text in the database: "#" and eight hexadecimal digits, alpha first. An invalid
/// colour gives the text of opaque black.
MOODSET_CONTENT_EXPORT QString colorToString(const QColor& color);

/// The colour that a text names, in any form that QColor::setNamedColor() understands. Any other
/// text gives an invalid colour.
MOODSET_CONTENT_EXPORT QColor colorFromString(const QString& name);
