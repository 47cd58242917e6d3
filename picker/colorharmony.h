// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QImage>

#include <vector>

/// Highlight colours that go with a picture: first the hues that most of its coloured pixels have,
/// then the hues that stand in harmony with the first: beside it, opposite to it, and a third of
/// the circle away. No two of them are alike. A picture without colours gives those that go with
/// blue.
std::vector<QColor> harmoniousColors(const QImage& picture);
