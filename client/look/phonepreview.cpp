// SPDX-License-Identifier: BSD-3-Clause
#include "phonepreview.h"

#include "applicationview.h"
#include "homescreen.h"
#include "screenpainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <colorstring.h>

namespace {

constexpr int OuterMargin = 64;
constexpr int PhoneGap = 72;
constexpr int Bezel = 16;
constexpr qreal ScreenRadius = 44;
constexpr int PhoneWidth = ScreenPainter::ScreenSize.width() + 2 * Bezel;
constexpr int PhoneHeight = ScreenPainter::ScreenSize.height() + 2 * Bezel;
constexpr int LegendTop = OuterMargin + PhoneHeight + 44;
constexpr int LegendHeight = 60;

static_assert(PhonePreviewSize.width() == 2 * OuterMargin + 2 * PhoneWidth + PhoneGap);
static_assert(PhonePreviewSize.height() == LegendTop + LegendHeight + 56);

const QColor LegendText(0xe8, 0xea, 0xed);
const QColor LegendDetail(0x9a, 0xa0, 0xa8);

QPainterPath rounded(const QRectF& rectangle, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

void paintBackground(QPainter& painter)
{
    QLinearGradient gradient(0, 0, 0, PhonePreviewSize.height());
    gradient.setColorAt(0, QColor(0x34, 0x37, 0x3d));
    gradient.setColorAt(1, QColor(0x1b, 0x1d, 0x21));
    painter.fillRect(QRect(QPoint(), PhonePreviewSize), gradient);
}

void paintPhone(QPainter& painter, const QPoint& corner, const QImage& screen)
{
    const QRectF body(corner, QSizeF(PhoneWidth, PhoneHeight));
    painter.fillPath(rounded(body, ScreenRadius + Bezel), QColor(0x08, 0x08, 0x0a));
    painter.setPen(QPen(QColor(0x5b, 0x60, 0x69), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(rounded(body, ScreenRadius + Bezel));

    // Painting with a brush gives smooth edges; a clip does not.
    const QPoint origin = corner + QPoint(Bezel, Bezel);
    QBrush brush(screen);
    brush.setTransform(QTransform::fromTranslate(origin.x(), origin.y()));
    painter.fillPath(rounded(QRectF(origin, ScreenPainter::ScreenSize), ScreenRadius), brush);
}

void paintText(
    QPainter& painter, const QRectF& rectangle, const QString& text, const QFont& font,
    const QColor& color)
{
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(
        rectangle, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetricsF(font).elidedText(text, Qt::ElideRight, rectangle.width()));
}

void paintColor(QPainter& painter, qreal left, const QString& name, const QColor& color)
{
    const QRectF field(left, LegendTop, LegendHeight, LegendHeight);
    painter.fillPath(rounded(field, 16), color);
    const qreal textLeft = field.right() + 14;
    constexpr qreal textWidth = 160;
    paintText(
        painter, {textLeft, field.top() + 2, textWidth, 28}, name,
        ScreenPainter::font(18, QFont::DemiBold), LegendText);
    paintText(
        painter, {textLeft, field.top() + 30, textWidth, 26}, colorToString(color),
        ScreenPainter::font(17), LegendDetail);
}

void paintLegend(QPainter& painter, const Theme& theme, const QString& name)
{
    constexpr qreal nameWidth = 300;
    constexpr qreal pitch = 229;
    paintText(
        painter, {OuterMargin, LegendTop, nameWidth - 24, LegendHeight}, name,
        ScreenPainter::font(30, QFont::DemiBold), LegendText);
    qreal left = OuterMargin + nameWidth;
    const auto add = [&](const QString& colorName, const QColor& color) {
        paintColor(painter, left, colorName, color);
        left += pitch;
    };
    add(QStringLiteral("Primary"), theme.primary);
    add(QStringLiteral("Secondary"), theme.secondary);
    add(QStringLiteral("Highlight"), theme.highlight);
    add(QStringLiteral("2nd highlight"), theme.secondaryHighlight);
}

} // namespace

QImage phonePreview(const Theme& theme, const Wallpapers& wallpapers, const QString& name)
{
    QImage preview(PhonePreviewSize, QImage::Format_RGB32);
    QPainter painter(&preview);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter);
    paintPhone(painter, QPoint(OuterMargin, OuterMargin), homeScreen(theme, wallpapers.home));
    paintPhone(
        painter, QPoint(OuterMargin + PhoneWidth + PhoneGap, OuterMargin),
        applicationView(theme, wallpapers.application));
    paintLegend(painter, theme, name);
    return preview;
}
