// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme.h"

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QSize>
#include <QString>

/// Paints the parts that all screens of a phone share, in the colours of a theme. Lengths are
/// logical pixels of a screen of 540 x 960.
class ScreenPainter
{
public:
    static constexpr QSize ScreenSize{540, 960};
    /// The width of the margins at the left and at the right.
    static constexpr int Margin = 30;
    static constexpr int ContentWidth = ScreenSize.width() - 2 * Margin;

    /// An empty screen. The theme must outlive the painter.
    explicit ScreenPainter(const Theme& theme);

    /// The image that has been painted so far.
    QImage image();

    const Theme& theme() const;
    QPainter& painter();

    /// The wallpaper, covering the screen.
    void wallpaper(const QImage& wallpaper);

    /// The line at the top, with the time and the charge.
    void statusBar();

    /// A line of text of the given height, cut where the rectangle ends.
    void text(
        const QRectF& rectangle, int flags, const QString& text, const QColor& color, int pixels,
        QFont::Weight weight = QFont::Normal);

    void roundedField(const QRectF& rectangle, qreal radius, const QColor& color);

    /// The colour with its opacity multiplied.
    static QColor faded(QColor color, qreal opacity);

    /// A font of the given height in pixels.
    static QFont font(int pixels, QFont::Weight weight = QFont::Normal);

private:
    const Theme& m_theme;
    QImage m_image;
    QPainter m_painter;
};
