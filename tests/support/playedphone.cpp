// SPDX-License-Identifier: BSD-3-Clause
#include "playedphone.h"

#include <QDBusVariant>

PlayedBackCover::PlayedBackCover()
    : PlayedService(QDBusConnection::SystemBus, QStringLiteral("com.zavro.dorseld"))
{
    setProperties(QString(), 0);
}

void PlayedBackCover::setProperties(const QVariant& id, const QVariant& ready)
{
    answer(QStringLiteral("Get"), [id, ready](const QDBusMessage& call) {
        const bool isId = call.arguments().value(1).toString() == QLatin1String("DORSELID");
        return call.createReply(QVariant::fromValue(QDBusVariant(isId ? id : ready)));
    });
}

void PlayedBackCover::announce(const QVariantMap& changes)
{
    sendChange({QStringLiteral("com.zavro.dorseld"), changes, QStringList()});
}

void PlayedBackCover::sendChange(const QVariantList& arguments)
{
    send(
        QStringLiteral("/com/zavro/dorseld"), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"), arguments);
}

PlayedDeviceLock::PlayedDeviceLock()
    : PlayedService(QDBusConnection::SystemBus, QStringLiteral("org.pelmomobile.vantile"))
{
    setState(0);
}

void PlayedDeviceLock::setState(const QVariant& state)
{
    answer(QStringLiteral("state"), QVariantList{state});
}

void PlayedDeviceLock::announce(const QVariant& state)
{
    send(
        QStringLiteral("/devicelock"), QStringLiteral("org.pelmomobile.vantile.devicelock"),
        QStringLiteral("stateChanged"), {state});
}

PlayedStoreClient::PlayedStoreClient()
    : PlayedService(QDBusConnection::SessionBus, QStringLiteral("com.zavro.zavrostore"))
{
    answer(QStringLiteral("dorselConnected"), QVariantList());
}

PlayedFeedback::PlayedFeedback()
    : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.sigxcpu.Feedback"))
{
    answer(QStringLiteral("TriggerFeedback"), QVariantList{7U});
}

void PlayedFeedback::end(quint32 event, quint32 reason)
{
    sendEnd({event, reason});
}

void PlayedFeedback::sendEnd(const QVariantList& arguments)
{
    send(
        QStringLiteral("/org/sigxcpu/Feedback"), QStringLiteral("org.sigxcpu.Feedback"),
        QStringLiteral("FeedbackEnded"), arguments);
}
