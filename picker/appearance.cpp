// SPDX-License-Identifier: BSD-3-Clause
#include "appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include <algorithm>

namespace {

QString portal()
{
    return QStringLiteral("org.freedesktop.portal.Desktop");
}
QString portalPath()
{
    return QStringLiteral("/org/freedesktop/portal/desktop");
}
QString settings()
{
    return QStringLiteral("org.freedesktop.portal.Settings");
}

QString schemeSpace()
{
    return QStringLiteral("org.freedesktop.appearance");
}
QString schemeKey()
{
    return QStringLiteral("color-scheme");
}
QString motionSpace()
{
    return QStringLiteral("org.gnome.desktop.interface");
}
QString motionKey()
{
    return QStringLiteral("enable-animations");
}

/// The portal's Read() wraps a value in two variants.
QVariant unwrapped(QVariant value)
{
    while (value.userType() == qMetaTypeId<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

Appearance::Appearance(QObject* parent)
    : QObject(parent)
{
    QDBusConnection::sessionBus().connect(
        portal(), portalPath(), settings(), QStringLiteral("SettingChanged"), this,
        SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(schemeSpace(), schemeKey());
    ask(motionSpace(), motionKey());
    qGuiApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, &Appearance::changed);
    connect(qGuiApp, &QGuiApplication::fontChanged, this, &Appearance::changed);
    connect(qGuiApp, &QGuiApplication::layoutDirectionChanged, this, &Appearance::changed);
}

void Appearance::setScheme(Scheme scheme)
{
    m_scheme = scheme;
    Q_EMIT changed();
}

bool Appearance::isDark() const
{
    const Scheme scheme = m_scheme == Scheme::System ? m_desktopScheme : m_scheme;
    if (scheme != Scheme::System) {
        return scheme == Scheme::Dark;
    }
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness()
        < palette.color(QPalette::WindowText).lightness();
}

bool Appearance::isMirrored()
{
    return QGuiApplication::layoutDirection() == Qt::RightToLeft;
}

int Appearance::textSize() const
{
    constexpr int smallest = 15;
    // QFontInfo would load the font, which is not drawn in this size otherwise.
    const QFont font = QGuiApplication::font();
    constexpr int pointsPerInch = 72;
    const int size = font.pixelSize() > 0
        ? font.pixelSize()
        : qRound(
            font.pointSizeF() * QGuiApplication::primaryScreen()->logicalDotsPerInchY()
            / pointsPerInch);
    return std::max(smallest, size);
}

bool Appearance::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        setUsesKeyboard(true);
    } else if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin) {
        setUsesKeyboard(false);
    }
    return QObject::eventFilter(watched, event);
}

void Appearance::setUsesKeyboard(bool usesKeyboard)
{
    if (m_usesKeyboard != usesKeyboard) {
        m_usesKeyboard = usesKeyboard;
        Q_EMIT usesKeyboardChanged();
    }
}

void Appearance::ask(const QString& nameSpace, const QString& key)
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal(), portalPath(), settings(), QStringLiteral("Read"));
    call.setArguments({nameSpace, key});
    auto* const watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, nameSpace, key] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            take(nameSpace, key, reply.value().variant());
        }
        watcher->deleteLater();
    });
}

void Appearance::settingChanged(
    const QString& nameSpace, const QString& key, const QDBusVariant& value)
{
    take(nameSpace, key, value.variant());
}

void Appearance::take(const QString& nameSpace, const QString& key, const QVariant& value)
{
    if (nameSpace == schemeSpace() && key == schemeKey()) {
        constexpr uint dark = 1;
        constexpr uint light = 2;
        const uint scheme = unwrapped(value).toUInt();
        m_desktopScheme = scheme == dark ? Scheme::Dark
            : scheme == light            ? Scheme::Light
                                         : Scheme::System;
        Q_EMIT changed();
    } else if (nameSpace == motionSpace() && key == motionKey()) {
        m_reducedMotion = !unwrapped(value).toBool();
        Q_EMIT changed();
    }
}
