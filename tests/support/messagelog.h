// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMutex>
#include <QStringList>

#include <vector>

/// Records what is written to the Qt message log while it lives, so that a test can compare it text
/// for text. Declare one in the test function, before the objects under test:
///
///     MessageLog log;
///     manager.remove(0);
///     QCOMPARE(log.takeWarnings(), QStringList({QStringLiteral("...")}));
///
/// Warnings and worse that no one has taken are strays. They fail the test that destroys the log,
/// and are printed. Debug and info lines may stay.
///
/// Recorded messages do not reach Qt Test, so that QTest::ignoreMessage() has no effect meanwhile.
/// Messages may come from any thread; all else belongs to the test's thread. Only one log may live
/// at a time.
class MessageLog
{
public:
    MessageLog();
    ~MessageLog();
    Q_DISABLE_COPY_MOVE(MessageLog)

    /// Takes the texts of all messages since the last call of either function, oldest first.
    QStringList takeMessages();

    /// Takes the texts of all messages of warning level and worse, oldest first, and leaves the
    /// others in the log.
    QStringList takeWarnings();

    /// Fails the current test, and returns false, if there are warnings or worse in the log. These
    /// are taken.
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
