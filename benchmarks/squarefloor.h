// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "measuredprocess.h"

#include <QString>

/// The cost of a task.
struct Cost
{
    Milliseconds wall{0};
    Milliseconds processor{0};
};

Cost operator+(const Cost& a, const Cost& b);
Cost operator-(const Cost& a, const Cost& b);

/// The minimum cost of making a wallpaper from a picture.
struct SquareFloor
{
    /// Reading the picture's largest centred square, as a square of another side.
    Cost read;
    /// Encoding that square as a JPEG, in memory.
    Cost encode;
    /// Encoding it darkened, as home wallpapers are.
    Cost encodeDarkened;
};

/// Reads a picture once and encodes its square, as it is and darkened. Ends this process if it
/// cannot.
SquareFloor measureSquare(const QString& picture, int side);
