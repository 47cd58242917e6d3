// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

class QSocketNotifier;

/// A connection to the control socket of sway. It never waits. Main thread only.
class SwayConnection : public QObject
{
    Q_OBJECT
public:
    enum class Message : quint32 { Command = 0, Subscribe = 2, WorkspaceEvent = 0x80000000 };

    using QObject::QObject;
    ~SwayConnection() override;

    /// Connects to the socket at a path; false if no process listens on it.
    bool open(const QString& path);
    bool isOpen() const { return m_descriptor >= 0; }
    void close();

    /// Sends a message. If sway does not take it, this returns false and closes the connection.
    bool send(Message type, const QByteArray& payload);

Q_SIGNALS:
    void received(SwayConnection::Message type, const QByteArray& payload);
    /// Sway has closed the connection, or has sent something that is not a message.
    void lost();

private:
    void handleInput();
    void takeMessages();
    void lose();

    int m_descriptor = -1;
    QSocketNotifier* m_notifier = nullptr; // a child
    QByteArray m_input;
};
