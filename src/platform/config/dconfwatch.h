// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>

class QDBusMessage;
class QDBusPendingCallWatcher;

/// Follows the changes that the key/value store's service announces on the session bus.
///
/// The store's client library can do this too, on a bus connection with two threads of its own.
/// That takes more than 1 MiB of memory, and its unused timeout wakes the process once, after 25 s.
/// This class shares Qt's thread, and needs nothing until the first watch.
///
/// It never waits for the bus. If there is no bus, nothing is followed. If the connection is lost,
/// the process ends. Main thread only.
class DconfWatch : public QObject
{
    Q_OBJECT
public:
    explicit DconfWatch(QObject* parent = nullptr);

    /// Reports changes of a key, or of all keys below a directory, until remove() has been called
    /// as often.
    void add(const QByteArray& path);
    void remove(const QByteArray& path);

Q_SIGNALS:
    /// The key `path`, or any key below the directory `path`, may have another value now. This is
    /// emitted from the event loop for each announced change, including own ones. It is also
    /// emitted once after each add(), because a value may have changed before the bus knew the
    /// rule.
    void changed(const QByteArray& path);

private Q_SLOTS:
    void handleNotify(const QString& prefix, const QStringList& changes, const QString& tag);
    void handleLostBus();

private:
    void connectToBus();
    QDBusPendingCallWatcher* call(const QDBusMessage& message);

    QDBusConnection m_bus;
    bool m_isOnBus = false;
};
