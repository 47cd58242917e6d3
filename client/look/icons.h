// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QPainterPath>

/// The icons of a few applications, as shapes to be filled, in a square of 44 x 44.
namespace Icons {

QPainterPath calls();
QPainterPath messages();
QPainterPath camera();
QPainterPath music();
QPainterPath places();
QPainterPath pictures();
QPainterPath calendar();
QPainterPath settings();

} // namespace Icons
