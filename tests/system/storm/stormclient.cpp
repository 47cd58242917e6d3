// SPDX-License-Identifier: BSD-3-Clause
#include "stormclient.h"

#include "busclient.h"
#include "daemonprocess.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

StormClient::StormClient(int number)
    : m_name(QStringLiteral("storm client %1").arg(number))
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name))
{
}

StormClient::~StormClient()
{
    QDBusConnection::disconnectFromBus(m_name);
}

void StormClient::send(const StormCall& call)
{
    ++m_calls;
    ++m_openCalls;
    auto* const watcher = new QDBusPendingCallWatcher(
        m_bus.asyncCall(
            BusClient::methodCall(call.method, call.arguments), DaemonProcess::deadlineMs),
        this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, call, watcher] {
        take(call, watcher);
    });
}

void StormClient::announceInstalled(const QString& package, const QString& coverId)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
        QStringLiteral("installedMoodset"));
    signal << package << coverId;
    m_bus.send(signal);
}

/// All calls are answered, and only those that match no method with an error.
void StormClient::take(const StormCall& call, QDBusPendingCallWatcher* reply)
{
    --m_openCalls;
    reply->deleteLater();
    const QDBusError::ErrorType expected =
        call.isMalformed ? QDBusError::UnknownMethod : QDBusError::NoError;
    if (reply->error().type() != expected && m_fault.isEmpty()) {
        m_fault = call.method + QStringLiteral(": ")
            + (reply->isError() ? reply->error().message() : QStringLiteral("no error"));
    }
}
