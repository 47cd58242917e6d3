// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "export.h"

#include <QColor>
#include <QString>

/// The text form of a colour in the database: "#" and eight hexadecimal digits, alpha first. An
/// invalid colour gives the text of opaque black.
MOODSET_CONTENT_EXPORT QString colorToString(const QColor& color);

/// The colour that a text names, in any form that QColor::setNamedColor() understands; an invalid
/// colour for any other text.
MOODSET_CONTENT_EXPORT QColor colorFromString(const QString& name);
