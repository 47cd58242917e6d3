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

constexpr int margin = 64;
constexpr int phoneGap = 72;
constexpr int bezel = 16;
constexpr qreal screenRadius = 44;
constexpr int phoneWidth = ScreenPainter::ScreenSize.width() + 2 * bezel;
constexpr int phoneHeight = ScreenPainter::ScreenSize.height() + 2 * bezel;
constexpr int legendTop = margin + phoneHeight + 44;
constexpr int legendHeight = 60;

static_assert(phonePreviewSize.width() == 2 * margin + 2 * phoneWidth + phoneGap);
static_assert(phonePreviewSize.height() == legendTop + legendHeight + 56);

const QColor legendText(0xe8, 0xea, 0xed);
const QColor legendDetail(0x9a, 0xa0, 0xa8);

QPainterPath rounded(const QRectF& rectangle, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

void paintBackground(QPainter& painter)
{
    QLinearGradient gradient(0, 0, 0, phonePreviewSize.height());
    gradient.setColorAt(0, QColor(0x34, 0x37, 0x3d));
    gradient.setColorAt(1, QColor(0x1b, 0x1d, 0x21));
    painter.fillRect(QRect(QPoint(), phonePreviewSize), gradient);
}

void paintPhone(QPainter& painter, const QPoint& corner, const QImage& screen)
{
    const QRectF body(corner, QSizeF(phoneWidth, phoneHeight));
    painter.fillPath(rounded(body, screenRadius + bezel), QColor(0x08, 0x08, 0x0a));
    painter.setPen(QPen(QColor(0x5b, 0x60, 0x69), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(rounded(body, screenRadius + bezel));

    // A brush has smooth edges, which a clip has not.
    const QPoint origin = corner + QPoint(bezel, bezel);
    QBrush brush(screen);
    brush.setTransform(QTransform::fromTranslate(origin.x(), origin.y()));
    painter.fillPath(rounded(QRectF(origin, ScreenPainter::ScreenSize), screenRadius), brush);
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
    const QRectF field(left, legendTop, legendHeight, legendHeight);
    painter.fillPath(rounded(field, 16), color);
    const qreal textLeft = field.right() + 14;
    constexpr qreal textWidth = 160;
    paintText(
        painter, {textLeft, field.top() + 2, textWidth, 28}, name,
        ScreenPainter::font(18, QFont::DemiBold), legendText);
    paintText(
        painter, {textLeft, field.top() + 30, textWidth, 26}, colorToString(color),
        ScreenPainter::font(17), legendDetail);
}

void paintLegend(QPainter& painter, const Theme& theme, const QString& name)
{
    constexpr qreal nameWidth = 300;
    constexpr qreal pitch = 229;
    paintText(
        painter, {margin, legendTop, nameWidth - 24, legendHeight}, name,
        ScreenPainter::font(30, QFont::DemiBold), legendText);
    qreal left = margin + nameWidth;
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
    QImage preview(phonePreviewSize, QImage::Format_RGB32);
    QPainter painter(&preview);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackground(painter);
    paintPhone(painter, QPoint(margin, margin), homeScreen(theme, wallpapers.home));
    paintPhone(
        painter, QPoint(margin + phoneWidth + phoneGap, margin),
        applicationView(theme, wallpapers.application));
    paintLegend(painter, theme, name);
    return preview;
}
