// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSize>
#include <QString>

/// Writes a JPEG that decodes and encodes as a photo from a camera does: a sample picture with the
/// noise of a sensor, always the same one. Ends this process if it cannot.
void writePhoto(const QString& path, const QSize& size);
