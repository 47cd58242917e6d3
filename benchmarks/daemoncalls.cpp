// SPDX-License-Identifier: BSD-3-Clause
#include "daemoncalls.h"

#include <QDBusConnection>

QDBusMessage daemonCall(
    const QString& method, const QVariantList& arguments, const QString& interface)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("com.zavro.moodsetd"), QStringLiteral("/com/zavro/moodsetd"), interface,
        method);
    message.setArguments(arguments);
    return message;
}

QDBusMessage emptyCall()
{
    return daemonCall(QStringLiteral("Ping"), {}, QStringLiteral("org.freedesktop.DBus.Peer"));
}

Milliseconds call(const QDBusMessage& message)
{
    const auto start = std::chrono::steady_clock::now();
    const QDBusMessage reply = QDBusConnection::sessionBus().call(message);
    const Milliseconds time = std::chrono::steady_clock::now() - start;
    if (reply.type() != QDBusMessage::ReplyMessage) {
        giveUp("a call failed: " + reply.errorMessage().toUtf8());
    }
    return time;
}
