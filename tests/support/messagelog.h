// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMutex>
#include <QStringList>

#include <vector>

/// Records the messages in the Qt log while it lives, so that a test can compare their texts.
/// Declare it in the test function, before the objects under test:
///
///     MessageLog log;
///     manager.remove(0);
///     QCOMPARE(log.takeWarnings(), QStringList({QStringLiteral("...")}));
///
/// When the log is destroyed, warnings and worse that were not taken are printed and fail the test.
/// Debug and info lines may stay.
///
/// Recorded messages do not reach Qt Test, so QTest::ignoreMessage() has no effect during this
/// time. Messages may come from any thread; use everything else on the test's thread. Only one log
/// may exist at a time.
class MessageLog
{
public:
    MessageLog();
    ~MessageLog();
    Q_DISABLE_COPY_MOVE(MessageLog)

    /// Takes the texts of all messages since the last call of either function, in their order.
    QStringList takeMessages();

    /// Takes the texts of all warnings and worse, in their order, and leaves the other messages.
    QStringList takeWarnings();

    /// Returns false and fails the current test if the log contains warnings or worse, which are
    /// taken.
    bool verifyNoStrays();

private:
    struct Message
    {
        QtMsgType type;
        QString text;
    };

    static void record(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QMutex m_mutex;
    std::vector<Message> m_messages;
    QtMessageHandler m_previousHandler;
};
