// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// A small picture of the picture at the local path `path`: upright, as small as it can be to cover
/// `wanted` pixels, of which a side that is not positive is not asked for, and never larger than
/// the picture. Null if the picture cannot be read. Any thread may call it.
QImage thumbnail(const QString& path, const QSize& wanted);
