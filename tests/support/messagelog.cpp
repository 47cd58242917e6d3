// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"

#include <QMutexLocker>
#include <QTest>

#include <utility>

namespace {

// Message handlers are plain functions.
MessageLog* currentLog = nullptr;

bool isWarningOrWorse(QtMsgType type)
{
    return type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg;
}

} // namespace

MessageLog::MessageLog()
{
    Q_ASSERT_X(currentLog == nullptr, "MessageLog", "only one log may live at a time");
    currentLog = this;
    m_previousHandler = qInstallMessageHandler(&MessageLog::record);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(m_previousHandler);
    currentLog = nullptr;
    verifyNoStrays();
}

QStringList MessageLog::takeMessages()
{
    const QMutexLocker locker(&m_mutex);
    QStringList texts;
    for (const Message& message : std::exchange(m_messages, {})) {
        texts.append(message.text);
    }
    return texts;
}

QStringList MessageLog::takeWarnings()
{
    const QMutexLocker locker(&m_mutex);
    QStringList texts;
    std::vector<Message> others;
    for (const Message& message : m_messages) {
        if (isWarningOrWorse(message.type)) {
            texts.append(message.text);
        } else {
            others.push_back(message);
        }
    }
    m_messages = std::move(others);
    return texts;
}

bool MessageLog::verifyNoStrays()
{
    const QStringList strays = takeWarnings();
    if (strays.isEmpty()) {
        return true;
    }
    const QString report =
        QStringLiteral("Stray messages:\n    %1").arg(strays.join(QStringLiteral("\n    ")));
    QTest::qFail(qPrintable(report), __FILE__, __LINE__);
    return false;
}

void MessageLog::record(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    {
        const QMutexLocker locker(&currentLog->m_mutex);
        currentLog->m_messages.push_back({type, text});
    }
    // The process ends here. Qt Test should report why.
    if (type == QtFatalMsg) {
        currentLog->m_previousHandler(type, context, text);
    }
}
