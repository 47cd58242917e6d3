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
/// The store's client library can do so too, on a bus connection with two threads of its own; that
/// takes more than 1 MiB of memory, and its unused timeout wakes the process once, 25 s later. This
/// shares Qt's thread, and takes nothing until the first watch.
///
/// Never waits for the bus. Without one nothing is followed; the process ends with the one that it
/// has had. Main thread only.
class DconfWatch : public QObject
{
    Q_OBJECT
public:
    explicit DconfWatch(QObject* parent = nullptr);

    /// Asks for the changes of a key, or of all below a directory, until remove() has been called
    /// as often.
    void add(const QByteArray& path);
    void remove(const QByteArray& path);

Q_SIGNALS:
    /// The key `path`, or any key below the directory `path`, may have another value now. Comes
    /// from the event loop: for each announced change, own ones included, and once after each
    /// add(), for what has changed before the bus knew of the watch.
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
