// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace Ngf {

/// Asks the session's feedback service to play sounds and other feedback.
///
/// An event is a name, for instance "dorsel_attach". The service's theme decides what it sounds
/// like. The service is "org.sigxcpu.Feedback" on the session bus.
///
/// Main thread only. No function waits for the service or for its start. Results are emitted as
/// signals from the event loop.
class Client : public QObject
{
    Q_OBJECT

public:
    explicit Client(QObject* parent = nullptr);

    using QObject::connect;

    /// Starts to follow the service, which may stop and start again. Further calls do nothing.
    void connect();

    /// Whether an event can be played: the service is running, or the bus can start it. False until
    /// the bus has answered, some milliseconds after connect().
    bool isConnected() const;

    /// Plays an event once. Returns the number of the event for eventFailed(). Numbers begin at 1
    /// and are never used twice. If the service is not running, the first event starts it.
    quint32 play(const QString& event);

Q_SIGNALS:
    /// An event has failed, in whole or in part: the service is missing, refuses the event, does
    /// not answer within 5 s, has nothing for it in its theme, or has stopped before the event
    /// ended. Emitted once for an event, and never from inside play().
    void eventFailed(const quint32& id);

private Q_SLOTS:
    void noteEnd(const QDBusMessage& message);

private:
    void noteFirstOwner(const QDBusPendingCallWatcher& call);
    void noteActivatableNames(const QDBusPendingCallWatcher& call);
    void noteOwner(const QString& name, const QString& former, const QString& current);
    void noteReply(quint32 id, const QDBusPendingCallWatcher& call);
    bool begin(quint32 id, quint32 event);
    void fail(quint32 id);
    void failRunningEvents();

    bool m_isFollowing = false;
    /// The service's unique bus name. Empty while the service is not running.
    QString m_owner;
    bool m_isActivatable = false;
    quint32 m_lastId = 0;
    /// The keys are the service's numbers of the running events, the values are our numbers.
    QHash<quint32, quint32> m_running;
    /// The number of calls that the service has not answered yet.
    int m_unanswered = 0;
    /// The reasons of events that ended before their number was known; the keys are the service's
    /// numbers. The service may announce the end of an event before it answers the call.
    QHash<quint32, quint32> m_endedEarly;
};

} // namespace Ngf
