// SPDX-License-Identifier: BSD-3-Clause
#include "screenpainter.h"

#include <QFontMetricsF>
#include <QPainterPath>

namespace {

constexpr int StatusBarHeight = 44;

void paintCharge(QPainter& painter, const QRectF& rectangle, const QColor& color)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, 4, 4);
    painter.setPen(QPen(color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
    painter.fillRect(QRectF(rectangle.right() + 2, rectangle.center().y() - 3, 3, 6), color);
    QRectF charge = rectangle.adjusted(3, 3, -3, -3);
    charge.setWidth(charge.width() * 0.7);
    painter.fillRect(charge, color);
}

void paintReception(QPainter& painter, const QPointF& bottomLeft, const QColor& color)
{
    constexpr int bars = 4;
    for (int bar = 0; bar < bars; ++bar) {
        const qreal height = 5 + 4 * bar;
        painter.fillRect(
            QRectF(bottomLeft.x() + 7 * bar, bottomLeft.y() - height, 4, height),
            bar + 1 < bars ? color : ScreenPainter::faded(color, 0.4));
    }
}

} // namespace

ScreenPainter::ScreenPainter(const Theme& theme)
    : m_theme(theme)
    , m_image(ScreenSize, QImage::Format_ARGB32_Premultiplied)
{
    m_image.fill(Qt::black);
    m_painter.begin(&m_image);
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
}

QImage ScreenPainter::image()
{
    m_painter.end();
    return m_image;
}

const Theme& ScreenPainter::theme() const
{
    return m_theme;
}

QPainter& ScreenPainter::painter()
{
    return m_painter;
}

void ScreenPainter::wallpaper(const QImage& wallpaper)
{
    const QImage covering =
        wallpaper.scaled(ScreenSize, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    QRect part(QPoint(), ScreenSize);
    part.moveCenter(covering.rect().center());
    m_painter.drawImage(QPoint(), covering, part);
}

void ScreenPainter::statusBar()
{
    const QRectF bar(Margin, 8, ContentWidth, StatusBarHeight);
    text(bar, Qt::AlignLeft, QStringLiteral("10:24"), m_theme.primary, 20, QFont::DemiBold);
    const qreal middle = bar.center().y();
    paintCharge(m_painter, QRectF(bar.right() - 35, middle - 8, 30, 16), m_theme.primary);
    paintReception(m_painter, QPointF(bar.right() - 74, middle + 8), m_theme.primary);
}

void ScreenPainter::text(
    const QRectF& rectangle, int flags, const QString& text, const QColor& color, int pixels,
    QFont::Weight weight)
{
    const QFont font = ScreenPainter::font(pixels, weight);
    m_painter.setFont(font);
    m_painter.setPen(color);
    m_painter.drawText(
        rectangle, flags | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(font).elidedText(text, Qt::ElideRight, rectangle.width()));
}

void ScreenPainter::roundedField(const QRectF& rectangle, qreal radius, const QColor& color)
{
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(color);
    m_painter.drawRoundedRect(rectangle, radius, radius);
}

QColor ScreenPainter::faded(QColor color, qreal opacity)
{
    color.setAlphaF(color.alphaF() * opacity);
    return color;
}

QFont ScreenPainter::font(int pixels, QFont::Weight weight)
{
    // If this font is missing, the system's default font is used.
    QFont font(QStringLiteral("Open Sans"));
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}
