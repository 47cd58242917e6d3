// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetservice.h"

#include "text.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

#include <moodsetcontent.h>
#include <moodsetnames.h>

namespace {

namespace Bus = MoodsetNames::Bus;
namespace Attribute = MoodsetNames::Attribute;

// The daemon handles one call at a time, and it may be scanning a directory with tens of thousands
// of files when the call arrives.
constexpr int CallTimeoutMs = 60000;

// The daemon takes its name a moment before it registers its object.
constexpr int RetryPauseMs = 20;

// The daemon may have to upgrade the database when it starts.
constexpr int StartTimeoutMs = 30000;

QString call(const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(Bus::Service, Bus::Path, Bus::Interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(call, QDBus::Block, CallTimeoutMs);
    return reply.type() == QDBusMessage::ErrorMessage ? reply.errorMessage() : QString();
}

// A standard call that changes nothing, and that the object itself answers on its own thread.
QDBusMessage introspection()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        Bus::Service, Bus::Path, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect"));
    call.setAutoStartService(false);
    return call;
}

bool answers()
{
    return QDBusConnection::sessionBus().call(introspection(), QDBus::Block, CallTimeoutMs).type()
        == QDBusMessage::ReplyMessage;
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
        Bus::Service, Bus::Path, Bus::Interface, Bus::ContentChanged, this,
        SIGNAL(contentChanged(int)));
    bus.connect(
        QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SIGNAL(ended()));
    const auto* watcher = new QDBusServiceWatcher(
        Bus::Service, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &MoodsetService::ended);
}

bool MoodsetService::isRunning() const
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(Bus::Service);
}

bool MoodsetService::hasBus()
{
    return QDBusConnection::sessionBus().isConnected();
}

bool MoodsetService::canBeStarted()
{
    if (!hasBus()) {
        return false;
    }
    return QDBusConnection::sessionBus().interface()->activatableServiceNames().value().contains(
        Bus::Service);
}

QString MoodsetService::start() const
{
    if (!hasBus()) {
        return Text::tr("the session bus cannot be reached: run this in a session, where "
                        "DBUS_SESSION_BUS_ADDRESS names it");
    }
    if (isRunning()) {
        return {};
    }
    if (!canBeStarted()) {
        return Text::tr("the daemon is not running, and the session bus cannot start it; start it "
                        "with: systemctl --user start moodsetd, or run moodsetd");
    }
    QDBusMessage start = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("StartServiceByName"));
    start.setArguments({QString(Bus::Service), 0U});
    const QDBusMessage reply =
        QDBusConnection::sessionBus().call(start, QDBus::Block, StartTimeoutMs);
    if (reply.type() == QDBusMessage::ErrorMessage) {
        return Text::tr("the daemon cannot be started: %1; see: systemctl --user status moodsetd")
            .arg(reply.errorMessage());
    }
    const QDeadlineTimer deadline(StartTimeoutMs);
    while (!answers()) {
        if (deadline.hasExpired()) {
            return Text::tr("the daemon was started and does not answer");
        }
        QThread::msleep(RetryPauseMs);
    }
    return {};
}

qint64 MoodsetService::processId() const
{
    if (!isRunning()) {
        return 0;
    }
    return QDBusConnection::sessionBus().interface()->servicePid(Bus::Service).value();
}

QString MoodsetService::indexFile(const QUrl& url) const
{
    return call(Bus::IndexFile, {encoded(url)});
}

QString MoodsetService::setMoodset(const QUrl& url) const
{
    return call(Bus::SetMoodset, {encoded(url)});
}

QString MoodsetService::createMoodset(const QUrl& url) const
{
    return call(Bus::CreateMoodset, {encoded(url)});
}

QString MoodsetService::saveMoodset(qint64 id, const QVariantMap& attributes) const
{
    return call(Bus::SaveAttributes, {int(MoodsetContent::Moodset), id, attributes});
}

QString MoodsetService::removeMoodset(qint64 id) const
{
    return call(Bus::Remove, {int(MoodsetContent::Moodset), id});
}

QString MoodsetService::installPackage(const QString& path) const
{
    return call(Bus::InstallPackage, {path});
}

QString MoodsetService::refreshMoodsets() const
{
    return call(Bus::RefreshMoodsets);
}

QString MoodsetService::saveSource(qint64 fileId, const QString& source) const
{
    return call(
        Bus::SaveAttributes,
        {int(MoodsetContent::Download), fileId, QVariantMap{{Attribute::Source, source}}});
}

void MoodsetService::ask()
{
    const QDBusPendingCall reply =
        QDBusConnection::sessionBus().asyncCall(introspection(), CallTimeoutMs);
    auto* watcher = new QDBusPendingCallWatcher(reply, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (!watcher->isError()) {
            Q_EMIT alive();
        } else {
            QTimer::singleShot(RetryPauseMs, this, &MoodsetService::ask);
        }
    });
}
