// SPDX-License-Identifier: BSD-3-Clause
#include "applicationview.h"

#include "screenpainter.h"

#include <QPainterPath>

namespace {

constexpr int Margin = ScreenPainter::Margin;
constexpr int ContentWidth = ScreenPainter::ContentWidth;

/// Two lines of text.
struct Row
{
    QString title;
    QString description;
    qreal top;
};

constexpr qreal RowHeight = 84;

// The application wallpaper is as bright as its picture; toolkits dim it behind their text.
void paintVeil(ScreenPainter& screen)
{
    constexpr qreal opacity = 0.6;
    screen.painter().fillRect(
        QRect(QPoint(), ScreenPainter::ScreenSize), ScreenPainter::faded(Qt::black, opacity));
}

void paintHeader(ScreenPainter& screen)
{
    const Theme& theme = screen.theme();
    QPainterPath back(QPointF(Margin + 14, 98));
    back.lineTo(Margin, 112);
    back.lineTo(Margin + 14, 126);
    screen.painter().strokePath(
        back, QPen(theme.highlight, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    screen.text(
        {Margin, 76, ContentWidth, 72}, Qt::AlignRight, QStringLiteral("Sounds"), theme.highlight,
        50, QFont::Light);
}

void paintSection(ScreenPainter& screen, const QString& title, qreal top)
{
    const Theme& theme = screen.theme();
    screen.text(
        {Margin, top, ContentWidth, 34}, Qt::AlignRight, title, theme.secondaryHighlight, 22,
        QFont::DemiBold);
}

void paintRow(
    ScreenPainter& screen, const Row& row, const QColor& titleColor, const QColor& descriptionColor)
{
    screen.text({Margin, row.top + 8, ContentWidth, 38}, Qt::AlignLeft, row.title, titleColor, 27);
    screen.text(
        {Margin, row.top + 46, ContentWidth, 28}, Qt::AlignLeft, row.description, descriptionColor,
        20);
}

void paintSwitch(ScreenPainter& screen, qreal top, bool isOn)
{
    constexpr qreal width = 68;
    constexpr qreal height = 36;
    constexpr qreal inset = 5;
    const Theme& theme = screen.theme();
    const QRectF track(
        Margin + ContentWidth - width, top + (RowHeight - height) / 2, width, height);
    const qreal knob = height - 2 * inset;
    const qreal left = isOn ? track.right() - inset - knob : track.left() + inset;
    const QColor color = isOn ? theme.highlight : theme.secondary;
    screen.roundedField(track, height / 2, ScreenPainter::faded(color, isOn ? 0.4 : 0.3));
    screen.roundedField({left, track.top() + inset, knob, knob}, knob / 2, color);
}

void paintSlider(ScreenPainter& screen, const QString& name, qreal top)
{
    constexpr qreal value = 0.6;
    constexpr qreal knob = 15;
    const Theme& theme = screen.theme();
    screen.text({Margin, top, ContentWidth, 38}, Qt::AlignLeft, name, theme.primary, 27);
    screen.text(
        {Margin, top, ContentWidth, 38}, Qt::AlignRight, QStringLiteral("60 %"), theme.highlight,
        24);
    const qreal line = top + 66;
    const qreal end = Margin + value * ContentWidth;
    screen.roundedField(
        {Margin, line - 3, ContentWidth, 6}, 3, ScreenPainter::faded(theme.secondary, 0.5));
    screen.roundedField({Margin, line - 3, end - Margin, 6}, 3, theme.highlight);
    screen.roundedField(
        {end - 2 * knob, line - 2 * knob, 4 * knob, 4 * knob}, 2 * knob,
        ScreenPainter::faded(theme.highlight, 0.25));
    screen.roundedField({end - knob, line - knob, 2 * knob, 2 * knob}, knob, theme.highlight);
}

void paintPressedRow(ScreenPainter& screen, const Row& row)
{
    const Theme& theme = screen.theme();
    screen.painter().fillRect(
        QRectF(0, row.top, ScreenPainter::ScreenSize.width(), RowHeight),
        ScreenPainter::faded(theme.secondaryHighlight, 0.28));
    paintRow(screen, row, theme.highlight, theme.secondaryHighlight);
}

void paintProgress(ScreenPainter& screen, const QString& text, qreal top)
{
    constexpr qreal value = 0.42;
    const Theme& theme = screen.theme();
    screen.text({Margin, top, ContentWidth, 28}, Qt::AlignLeft, text, theme.secondary, 20);
    const QRectF track(Margin, top + 38, ContentWidth, 8);
    screen.roundedField(track, 4, ScreenPainter::faded(theme.primary, 0.15));
    screen.roundedField(
        {track.topLeft(), QSizeF(value * track.width(), track.height())}, 4,
        theme.secondaryHighlight);
}

void paintButton(
    ScreenPainter& screen, const QRectF& field, const QString& name, const QColor& color,
    qreal opacity)
{
    screen.roundedField(field, 18, ScreenPainter::faded(color, opacity));
    screen.text(field, Qt::AlignHCenter, name, color, 25);
}

void paintButtons(ScreenPainter& screen, qreal top)
{
    constexpr qreal gap = 20;
    constexpr qreal width = (ContentWidth - gap) / 2;
    constexpr qreal height = 68;
    const Theme& theme = screen.theme();
    paintButton(screen, {Margin, top, width, height}, QStringLiteral("Reset"), theme.primary, 0.15);
    paintButton(
        screen, {Margin + width + gap, top, width, height}, QStringLiteral("Save"), theme.highlight,
        0.3);
}

} // namespace

QImage applicationView(const Theme& theme, const QImage& wallpaper)
{
    ScreenPainter screen(theme);
    screen.wallpaper(wallpaper);
    paintVeil(screen);
    screen.statusBar();
    paintHeader(screen);

    const Row ringer{QStringLiteral("Ringer"), QStringLiteral("Calls and alarms"), 176};
    paintRow(screen, ringer, theme.primary, theme.secondary);
    paintSwitch(screen, ringer.top, true);
    const Row vibration{
        QStringLiteral("Vibration"), QStringLiteral("While the ringer is off"), 264};
    paintRow(screen, vibration, theme.primary, theme.secondary);
    paintSwitch(screen, vibration.top, false);
    paintSlider(screen, QStringLiteral("Volume"), 366);

    paintSection(screen, QStringLiteral("Tones"), 482);
    paintPressedRow(screen, {QStringLiteral("Ringtone"), QStringLiteral("Tide"), 524});
    paintRow(
        screen, {QStringLiteral("Messages"), QStringLiteral("Gull"), 610}, theme.primary,
        theme.secondary);
    paintRow(
        screen, {QStringLiteral("Calendar"), QStringLiteral("Buoy"), 696}, theme.primary,
        theme.secondary);

    paintProgress(screen, QStringLiteral("3 of 7 tones copied"), 788);
    paintButtons(screen, 862);
    return screen.image();
}
