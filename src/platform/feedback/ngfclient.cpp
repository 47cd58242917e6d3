// SPDX-License-Identifier: BSD-3-Clause
#include "ngfclient.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

#include <algorithm>
#include <limits>

namespace {

const QLatin1String ServiceName("org.sigxcpu.Feedback");
const QLatin1String ServicePath("/org/sigxcpu/Feedback");
const QLatin1String ServiceInterface("org.sigxcpu.Feedback");

/// The service keeps a volume setting for each application under this name.
const QLatin1String ApplicationId("com.zavro.moodsetd");

/// A sound that comes later than this means nothing to the user any more.
constexpr int AnswerTimeout = 5000; // milliseconds

/// The timeout of an event that plays each of its feedbacks once.
constexpr int OnceOnly = -1;

/// The reason for the end of an event that is not in the theme. The service sends it as an unsigned
/// number.
constexpr quint32 NotFound = std::numeric_limits<quint32>::max();

QDBusPendingCall askBus(const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().asyncCall(call);
}

/// Calls `receive` with the finished call, always from the event loop, even if an error is known at
/// once.
template <typename Receiver>
void whenFinished(const QDBusPendingCall& call, QObject* context, Receiver receive)
{
    auto* const watcher = new QDBusPendingCallWatcher(call, context);
    QObject::connect(
        watcher, &QDBusPendingCallWatcher::finished, context,
        [receive](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            receive(*finished);
        });
}

} // namespace

namespace Ngf {

Client::Client(QObject* parent)
    : QObject(parent)
{
}

// The signals are connected before the calls are sent, so no change is missed.
void Client::connect()
{
    if (m_isFollowing) {
        return;
    }
    m_isFollowing = true;
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto* const watcher =
        new QDBusServiceWatcher(ServiceName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &Client::noteOwner);
    // This accepts any sender: to filter by the service's name, Qt would wait for the bus here.
    bus.connect(
        QString(), ServicePath, ServiceInterface, QStringLiteral("FeedbackEnded"), this,
        SLOT(noteEnd(QDBusMessage)));
    whenFinished(
        askBus(QStringLiteral("GetNameOwner"), {ServiceName}), this,
        [this](const QDBusPendingCallWatcher& call) { noteFirstOwner(call); });
    whenFinished(
        askBus(QStringLiteral("ListActivatableNames"), {}), this,
        [this](const QDBusPendingCallWatcher& call) { noteActivatableNames(call); });
}

bool Client::isConnected() const
{
    return m_isActivatable || !m_owner.isEmpty();
}

quint32 Client::play(const QString& event)
{
    const quint32 id = ++m_lastId;
    if (!isConnected()) {
        QMetaObject::invokeMethod(
            this, [this, id] { fail(id); }, Qt::QueuedConnection);
        return id;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        ServiceName, ServicePath, ServiceInterface, QStringLiteral("TriggerFeedback"));
    call << QString(ApplicationId) << event << QVariantMap() << OnceOnly;
    ++m_unanswered;
    whenFinished(
        QDBusConnection::sessionBus().asyncCall(call, AnswerTimeout), this,
        [this, id](const QDBusPendingCallWatcher& finished) { noteReply(id, finished); });
    return id;
}

void Client::noteFirstOwner(const QDBusPendingCallWatcher& call)
{
    const QDBusPendingReply<QString> owner = call;
    if (owner.isValid()) {
        m_owner = owner.value();
    }
}

void Client::noteActivatableNames(const QDBusPendingCallWatcher& call)
{
    const QDBusPendingReply<QStringList> names = call;
    m_isActivatable = names.isValid() && names.value().contains(ServiceName);
}

void Client::noteOwner(const QString& name, const QString& former, const QString& current)
{
    Q_UNUSED(name)
    m_owner = current;
    if (!former.isEmpty()) {
        m_endedEarly.clear();
        failRunningEvents();
    }
}

void Client::noteReply(quint32 id, const QDBusPendingCallWatcher& call)
{
    const QDBusPendingReply<quint32> reply = call;
    const bool hasFailed = reply.isError() || !begin(id, reply.value());
    --m_unanswered;
    if (m_unanswered == 0) {
        m_endedEarly.clear();
    }
    if (hasFailed) {
        fail(id);
    }
}

/// Follows an event that the service has begun under the number `event`. False if the event has
/// ended already because the theme does not have it.
bool Client::begin(quint32 id, quint32 event)
{
    if (m_endedEarly.contains(event)) {
        return m_endedEarly.take(event) != NotFound;
    }
    m_running.insert(event, id);
    return true;
}

void Client::noteEnd(const QDBusMessage& message)
{
    if (message.service() != m_owner || message.signature() != QLatin1String("uu")) {
        return;
    }
    const quint32 event = message.arguments().at(0).toUInt();
    const quint32 reason = message.arguments().at(1).toUInt();
    if (!m_running.contains(event)) {
        if (m_unanswered > 0) {
            m_endedEarly.insert(event, reason);
        }
        return;
    }
    const quint32 id = m_running.take(event);
    if (reason == NotFound) {
        fail(id);
    }
}

void Client::fail(quint32 id)
{
    Q_EMIT eventFailed(id);
}

void Client::failRunningEvents()
{
    QList<quint32> ids = m_running.values();
    m_running.clear();
    std::sort(ids.begin(), ids.end());
    for (const quint32 id : std::as_const(ids)) {
        fail(id);
    }
}

} // namespace Ngf
