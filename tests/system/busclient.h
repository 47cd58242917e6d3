// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariant>

/// A client of the daemon on the session bus. It makes calls and records the announcements.
class BusClient : public QObject
{
    Q_OBJECT

public:
    BusClient();

    /// Calls a method of the daemon's interface, and waits for the reply.
    static QDBusMessage call(const QString& method, const QVariantList& arguments = {});

    /// The same, without waiting.
    static QDBusPendingCall callLater(const QString& method, const QVariantList& arguments);

    /// A call of a method of the daemon's interface, to be sent on any connection.
    static QDBusMessage methodCall(const QString& method, const QVariantList& arguments);

    /// Calls any method of the daemon's process, and waits for the reply.
    static QDBusMessage callObject(
        const QString& path, const QString& interface, const QString& method,
        const QVariantList& arguments = {});

    /// Calls a method of the daemon's interface, and does not wait.
    static void send(const QString& method, const QVariantList& arguments);

    /// Whether the daemon's process is on the bus. Qt's bus thread replies to this, even while the
    /// daemon is busy, and after all earlier calls have reached the daemon.
    static bool ping();

    /// Whether the daemon replies to calls of its interface.
    static bool isAnswered();

    /// The types announced so far, oldest first. They include everything that the daemon has
    /// announced before its last reply.
    QList<int> announcements() const;

    void forgetAnnouncements();

private Q_SLOTS:
    void noteAnnouncement(int type);

private:
    QList<int> m_announcements;
};
