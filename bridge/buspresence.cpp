// SPDX-License-Identifier: BSD-3-Clause
#include "buspresence.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

BusPresence::BusPresence(const QStringList& names, QObject* parent)
    : QObject(parent)
    , m_names(names)
{
    m_watcher.setConnection(QDBusConnection::sessionBus());
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(
        &m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString& name, const QString& old, const QString& owner) {
            Q_UNUSED(old)
            handleOwner(name, owner);
        });
}

void BusPresence::follow()
{
    m_watcher.setWatchedServices(m_names);
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    const QDBusMessage call = QDBusMessage::createMethodCall(
        bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("ListNames"));
    auto* const watcher =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QStringList names = QDBusPendingReply<QStringList>(*watcher).value();
        for (const QString& name : m_names) {
            if (names.contains(name) && !m_present.contains(name)) {
                handleOwner(name, name);
            }
        }
    });
}

void BusPresence::handleOwner(const QString& name, const QString& owner)
{
    if (owner.isEmpty()) {
        m_present.remove(name);
    } else {
        m_present.insert(name);
    }
    Q_EMIT changed();
}
