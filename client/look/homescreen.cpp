// SPDX-License-Identifier: BSD-3-Clause
#include "homescreen.h"

#include "icons.h"
#include "screenpainter.h"

#include <QPainterPath>

namespace {

constexpr int HomeMargin = ScreenPainter::Margin;
constexpr int HomeWidth = ScreenPainter::ContentWidth;

struct Event
{
    QString title;
    QString time;
    QString text;
    QPainterPath icon;
    qreal top;
};

void paintClock(ScreenPainter& screen)
{
    const Theme& theme = screen.theme();
    screen.text(
        {HomeMargin, 84, HomeWidth, 128}, Qt::AlignHCenter, QStringLiteral("10:24"), theme.primary,
        128, QFont::Light);
    screen.text(
        {HomeMargin, 216, HomeWidth, 36}, Qt::AlignHCenter, QStringLiteral("Saturday, 21 November"),
        theme.secondary, 26);
}

void paintEvent(ScreenPainter& screen, const Event& event)
{
    constexpr qreal height = 92;
    constexpr qreal iconField = 56;
    constexpr qreal padding = 18;
    const Theme& theme = screen.theme();
    const QRectF card(HomeMargin, event.top, HomeWidth, height);
    screen.roundedField(card, 24, ScreenPainter::faded(Qt::black, 0.45));

    const QPointF corner = card.topLeft() + QPointF(padding, padding);
    screen.roundedField(
        {corner, QSizeF(iconField, iconField)}, iconField / 2,
        ScreenPainter::faded(theme.highlight, 0.3));
    const QTransform place =
        QTransform().translate(corner.x() + 13, corner.y() + 13).scale(0.68, 0.68);
    screen.painter().fillPath(place.map(event.icon), theme.highlight);

    const qreal left = corner.x() + iconField + padding;
    const qreal width = card.right() - padding - left;
    screen.text(
        {left, event.top + 14, width, 32}, Qt::AlignLeft, event.title, theme.highlight, 24,
        QFont::DemiBold);
    screen.text(
        {left, event.top + 14, width, 32}, Qt::AlignRight, event.time, theme.secondaryHighlight,
        20);
    screen.text({left, event.top + 48, width, 28}, Qt::AlignLeft, event.text, theme.primary, 21);
}

void paintBadge(ScreenPainter& screen, const QPointF& middle, const QString& number)
{
    constexpr qreal radius = 15;
    const Theme& theme = screen.theme();
    const QRectF field(middle - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
    screen.roundedField(field, radius, theme.highlight);
    // On the highlight colour itself, only black or white can be read for sure.
    const bool isLight = qGray(theme.highlight.rgb()) > 140;
    screen.text(
        field, Qt::AlignHCenter, number, isLight ? Qt::black : Qt::white, 18, QFont::DemiBold);
}

void paintApplication(
    ScreenPainter& screen, const QPointF& corner, const QString& name, const QPainterPath& icon)
{
    constexpr qreal side = 88;
    const Theme& theme = screen.theme();
    screen.roundedField(
        {corner, QSizeF(side, side)}, 28, ScreenPainter::faded(theme.primary, 0.16));
    const qreal inset = (side - 44) / 2;
    screen.painter().fillPath(icon.translated(corner + QPointF(inset, inset)), theme.primary);
    screen.text(
        {corner.x() - 14, corner.y() + side + 6, side + 28, 28}, Qt::AlignHCenter, name,
        theme.primary, 18);
}

void paintApplications(ScreenPainter& screen)
{
    constexpr int columns = 4;
    constexpr qreal pitch = (HomeWidth - 88) / (columns - 1.0);
    const QVector<QPair<QString, QPainterPath>> applications{
        {QStringLiteral("Calls"), Icons::calls()},
        {QStringLiteral("Messages"), Icons::messages()},
        {QStringLiteral("Camera"), Icons::camera()},
        {QStringLiteral("Pictures"), Icons::pictures()},
        {QStringLiteral("Calendar"), Icons::calendar()},
        {QStringLiteral("Places"), Icons::places()},
        {QStringLiteral("Music"), Icons::music()},
        {QStringLiteral("Settings"), Icons::settings()}};
    for (int index = 0; index < applications.size(); ++index) {
        const int row = index / columns;
        const QPointF corner(HomeMargin + pitch * (index % columns), 598 + 142 * row);
        paintApplication(
            screen, corner, applications.at(index).first, applications.at(index).second);
    }
    paintBadge(screen, QPointF(HomeMargin + pitch + 84, 602), QStringLiteral("2"));
}

void paintPages(ScreenPainter& screen)
{
    constexpr int pages = 3;
    constexpr qreal pitch = 24;
    const Theme& theme = screen.theme();
    for (int page = 0; page < pages; ++page) {
        const qreal x = ScreenPainter::ScreenSize.width() / 2.0 + pitch * (page - 1);
        screen.roundedField({x - 5, 912, 10, 10}, 5, page == 0 ? theme.highlight : theme.secondary);
    }
}

} // namespace

QImage homeScreen(const Theme& theme, const QImage& wallpaper)
{
    ScreenPainter screen(theme);
    screen.wallpaper(wallpaper);
    screen.statusBar();
    paintClock(screen);
    paintEvent(
        screen,
        {QStringLiteral("Mia"), QStringLiteral("10:12"),
         QStringLiteral("See you at the lighthouse?"), Icons::messages(), 330});
    paintEvent(
        screen,
        {QStringLiteral("Walk by the sea"), QStringLiteral("11:00"),
         QStringLiteral("North beach, the old pier"), Icons::calendar(), 434});
    paintApplications(screen);
    paintPages(screen);
    return screen.image();
}
