// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetservice.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QTimer>

#include <moodsetcontent.h>

namespace {

const auto serviceName = QStringLiteral("com.zavro.moodsetd");
const auto objectPath = QStringLiteral("/com/zavro/moodsetd");
const auto interfaceName = QStringLiteral("com.zavro.moodsetd");

// The daemon does one thing at a time; a call can come behind a folder of tens of thousands of
// files.
constexpr int callTimeoutMs = 60000;

// The daemon takes its name a moment before its object is there.
constexpr int retryPauseMs = 20;

QString call(const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, method);
    call.setArguments(arguments);
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(call, QDBus::Block, callTimeoutMs);
    return reply.type() == QDBusMessage::ErrorMessage ? reply.errorMessage() : QString();
}

QString encoded(const QUrl& url)
{
    return QString::fromLatin1(url.toEncoded());
}

} // namespace

MoodsetService::MoodsetService(QObject* parent)
    : QObject(parent)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(
        serviceName, objectPath, interfaceName, QStringLiteral("contentChanged"), this,
        SIGNAL(contentChanged(int)));
    bus.connect(
        QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SIGNAL(ended()));
    const auto* watcher = new QDBusServiceWatcher(
        serviceName, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &MoodsetService::ended);
}

bool MoodsetService::isRunning() const
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(serviceName);
}

QString MoodsetService::indexFile(const QUrl& url) const
{
    return call(QStringLiteral("indexFile"), {encoded(url)});
}

QString MoodsetService::setMoodset(const QUrl& url) const
{
    return call(QStringLiteral("setMoodset"), {encoded(url)});
}

QString MoodsetService::createMoodset(const QUrl& url) const
{
    return call(QStringLiteral("createMoodset"), {encoded(url)});
}

QString MoodsetService::saveMoodset(qint64 id, const QVariantMap& attributes) const
{
    return call(
        QStringLiteral("saveAttributes"),
        {static_cast<int>(MoodsetContent::Moodset), id, attributes});
}

QString MoodsetService::removeMoodset(qint64 id) const
{
    return call(QStringLiteral("remove"), {static_cast<int>(MoodsetContent::Moodset), id});
}

QString MoodsetService::installPackage(const QString& path) const
{
    return call(QStringLiteral("installPackage"), {path});
}

QString MoodsetService::refreshMoodsets() const
{
    return call(QStringLiteral("refreshMoodsets"));
}

void MoodsetService::ask()
{
    // A standard call that changes nothing, and that the object itself answers on its own thread.
    const QDBusMessage call = QDBusMessage::createMethodCall(
        serviceName, objectPath, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect"));
    const QDBusPendingCall reply = QDBusConnection::sessionBus().asyncCall(call, callTimeoutMs);
    auto* watcher = new QDBusPendingCallWatcher(reply, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            Q_EMIT alive();
        } else {
            QTimer::singleShot(retryPauseMs, this, &MoodsetService::ask);
        }
    });
}
