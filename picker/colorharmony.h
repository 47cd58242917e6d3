// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QImage>

#include <vector>

/// Suggests highlight colours for a picture: first the hues that most of its coloured pixels have,
/// then the hues in harmony with the first one: next to it, opposite to it, and a third of the
/// circle away. No two of them look alike. For a picture without colours, these are the colours for
/// blue.
std::vector<QColor> harmoniousColors(const QImage& picture);
