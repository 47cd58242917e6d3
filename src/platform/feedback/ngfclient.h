// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QObject>
#include <QString>

class QDBusMessage;
class QDBusPendingCallWatcher;

namespace Ngf {

/// Asks the session's feedback service for sounds and the like.
///
/// An event is a name, "dorsel_attach" for instance; what it sounds like is up to the service's
/// theme. The service is "org.sigxcpu.Feedback" on the session bus.
///
/// Main thread only. No function waits for the service, nor for its start; whatever there is to
/// tell comes as a signal from the event loop.
class Client : public QObject
{
    Q_OBJECT

public:
    explicit Client(QObject* parent = nullptr);

    using QObject::connect;

    /// Begins to follow the service, for good: it may come and go. Further calls do nothing.
    void connect();

    /// Whether an event can be played: the service runs, or the bus can start it on demand. False
    /// until the bus has answered, some milliseconds after connect().
    bool isConnected() const;

    /// Plays an event once. Returns the number that eventFailed() knows it by: from 1 on, and never
    /// the same twice. The first event starts the service if need be.
    quint32 play(const QString& event);

Q_SIGNALS:
    /// An event has failed, wholly or in part: the service is not there, refuses it, takes longer
    /// than 5 s to answer, has nothing in its theme for it, or has gone before the event's end.
    /// Comes once for an event, and never from inside play().
    void eventFailed(const quint32& id);

private Q_SLOTS:
    void noteEnd(const QDBusMessage& message);

private:
    void noteFirstOwner(const QDBusPendingCallWatcher& call);
    void noteActivatableNames(const QDBusPendingCallWatcher& call);
    void noteOwner(const QString& name, const QString& former, const QString& current);
    void noteReply(quint32 id, const QDBusPendingCallWatcher& call);
    void fail(quint32 id);
    void failRunningEvents();

    bool m_isFollowing = false;
    /// The service's unique name; empty while it does not run.
    QString m_owner;
    bool m_isActivatable = false;
    quint32 m_lastId = 0;
    /// The service's number of each event that it has begun, to ours.
    QHash<quint32, quint32> m_running;
    /// Calls that the service has not answered.
    int m_unanswered = 0;
    /// Why events ended meanwhile, by the service's numbers: the end of an event may be announced
    /// before its number is known.
    QHash<quint32, quint32> m_endedEarly;
};

} // namespace Ngf
