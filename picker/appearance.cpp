// SPDX-License-Identifier: BSD-3-Clause
#include "appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>

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
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, &Appearance::changed);
    connect(qGuiApp, &QGuiApplication::fontChanged, this, &Appearance::changed);
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

int Appearance::textSize() const
{
    constexpr int smallest = 15;
    return std::max(smallest, QFontInfo(QGuiApplication::font()).pixelSize());
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
