// SPDX-License-Identifier: BSD-3-Clause
#include "dconfwatch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QUrl>

#include <csignal>

namespace {

const QString ConnectionName = QStringLiteral("key/value store");

QString sessionBusAddress()
{
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address;
    }
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QLatin1String("unix:path=")
        + QString::fromLatin1(QUrl::toPercentEncoding(folder, "/", "~")) + QLatin1String("/bus");
}

QDBusMessage busCall(const char* method)
{
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QLatin1String(method));
}

/// The call that adds or removes a rule for a path. For a key, the rule selects changes of the key
/// and of the directories above it; for a directory, all changes below it.
QDBusMessage matchCall(const char* method, const QByteArray& path)
{
    // In the quoted value of a rule, a quote must be outside of the quotes, after a backslash.
    const QString quoted =
        QString::fromUtf8(path).replace(QLatin1Char('\''), QLatin1String("'\\''"));
    QDBusMessage message = busCall(method);
    message << QStringLiteral("type='signal',interface='ca.desrt.dconf.Writer',member='Notify',"
                              "arg0path='")
            + quoted + QLatin1Char('\'');
    return message;
}

} // namespace

DconfWatch::DconfWatch(QObject* parent)
    : QObject(parent)
    , m_bus(ConnectionName) // none yet
{
}

void DconfWatch::add(const QByteArray& path)
{
    if (!m_bus.isConnected()) {
        connectToBus();
    }
    connect(
        call(matchCall("AddMatch", path)), &QDBusPendingCallWatcher::finished, this,
        [this, path] { Q_EMIT changed(path); });
}

void DconfWatch::remove(const QByteArray& path)
{
    // Nothing depends on the result.
    static_cast<void>(m_bus.send(matchCall("RemoveMatch", path)));
}

// QDBusConnection::connectToBus() would block if the bus hangs. For Qt, this is a connection to a
// peer, so this class sends the bus's greeting and the rules itself.
void DconfWatch::connectToBus()
{
    m_bus = QDBusConnection::connectToPeer(sessionBusAddress(), ConnectionName);
    m_bus.connect(
        QString(), QString(), QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"),
        this, SLOT(handleNotify(QString, QStringList, QString)));
    m_bus.connect(
        QString(), QString(), QStringLiteral("org.freedesktop.DBus.Local"),
        QStringLiteral("Disconnected"), this, SLOT(handleLostBus()));
    connect(
        call(busCall("Hello")), &QDBusPendingCallWatcher::finished, this,
        [this](QDBusPendingCallWatcher* hello) { m_isOnBus = !hello->isError(); });
}

QDBusPendingCallWatcher* DconfWatch::call(const QDBusMessage& message)
{
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
    return watcher;
}

void DconfWatch::handleNotify(const QString& prefix, const QStringList& changes, const QString& tag)
{
    Q_UNUSED(tag)
    // An empty change means the prefix itself.
    for (const QString& change : changes) {
        Q_EMIT changed((prefix + change).toUtf8());
    }
}

// The client library of the store also ends the process, from its first write on.
void DconfWatch::handleLostBus()
{
    if (m_isOnBus) {
        static_cast<void>(std::raise(SIGTERM));
    }
}
