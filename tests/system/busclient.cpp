// SPDX-License-Identifier: BSD-3-Clause
#include "busclient.h"

#include "daemonprocess.h"

#include <QCoreApplication>
#include <QDBusConnection>

namespace {

const QLatin1String Service("com.zavro.moodsetd");
const QLatin1String Path("/com/zavro/moodsetd");
const QLatin1String Interface("com.zavro.moodsetd");

QDBusMessage callMessage(
    const QString& path, const QString& interface, const QString& method,
    const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(Service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

} // namespace

BusClient::BusClient()
{
    QDBusConnection::sessionBus().connect(
        QString(), Path, Interface, QStringLiteral("contentChanged"), this,
        SLOT(noteAnnouncement(int)));
}

QDBusMessage BusClient::call(const QString& method, const QVariantList& arguments)
{
    return callObject(Path, Interface, method, arguments);
}

QDBusPendingCall BusClient::callLater(const QString& method, const QVariantList& arguments)
{
    return QDBusConnection::sessionBus().asyncCall(
        methodCall(method, arguments), DaemonProcess::deadlineMs);
}

QDBusMessage BusClient::methodCall(const QString& method, const QVariantList& arguments)
{
    return callMessage(Path, Interface, method, arguments);
}

QDBusMessage BusClient::callObject(
    const QString& path, const QString& interface, const QString& method,
    const QVariantList& arguments)
{
    return QDBusConnection::sessionBus().call(
        callMessage(path, interface, method, arguments), QDBus::Block, DaemonProcess::deadlineMs);
}

void BusClient::send(const QString& method, const QVariantList& arguments)
{
    QDBusConnection::sessionBus().send(methodCall(method, arguments));
}

bool BusClient::ping()
{
    return callObject(Path, QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"))
               .type()
        == QDBusMessage::ReplyMessage;
}

bool BusClient::isAnswered()
{
    // There is no type 3, so this does nothing and logs nothing.
    const QVariantList nothing{3, qlonglong(0)};
    return call(QStringLiteral("remove"), nothing).type() == QDBusMessage::ReplyMessage;
}

QList<int> BusClient::announcements() const
{
    // The thread of the bus receives them and passes them on as events.
    QCoreApplication::sendPostedEvents();
    return m_announcements;
}

void BusClient::forgetAnnouncements()
{
    QCoreApplication::sendPostedEvents();
    m_announcements.clear();
}

void BusClient::noteAnnouncement(int type)
{
    m_announcements.append(type);
}
