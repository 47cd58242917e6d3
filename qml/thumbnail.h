// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// Makes an upright thumbnail of the picture at the local path `path`. It is as small as it can be
/// to cover `wanted` pixels, and never larger than the picture. A side of `wanted` that is not
/// positive does not count. Null if the picture cannot be read. Any thread may call it.
QImage thumbnail(const QString& path, const QSize& wanted);
