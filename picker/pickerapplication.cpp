// SPDX-License-Identifier: BSD-3-Clause
#include "pickerapplication.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace {

QString busName()
{
    return QStringLiteral("com.zavro.moodsetpicker");
}
QString objectPath()
{
    return QStringLiteral("/com/zavro/moodsetpicker");
}

} // namespace

bool PickerApplication::claim()
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        return true;
    }
    // The object is registered first, because a call can come as soon as the program has its name.
    bus.registerObject(objectPath(), this, QDBusConnection::ExportAllSlots);
    return bus.registerService(busName());
}

bool PickerApplication::handOver(const QStringList& urls)
{
    const bool opens = !urls.isEmpty();
    QDBusMessage call = QDBusMessage::createMethodCall(
        busName(), objectPath(), QStringLiteral("org.freedesktop.Application"),
        opens ? QStringLiteral("Open") : QStringLiteral("Activate"));
    QVariantList arguments;
    if (opens) {
        arguments.append(urls);
    }
    arguments.append(QVariantMap());
    call.setArguments(arguments);
    constexpr int timeout = 5000;
    return QDBusConnection::sessionBus().call(call, QDBus::Block, timeout).type()
        == QDBusMessage::ReplyMessage;
}

void PickerApplication::Activate(const QVariantMap& /*platformData*/)
{
    Q_EMIT activated();
}

void PickerApplication::Open(const QStringList& urls, const QVariantMap& /*platformData*/)
{
    Q_EMIT activated();
    if (!urls.isEmpty()) {
        Q_EMIT openRequested(urls.first());
    }
}

void PickerApplication::ActivateAction(
    const QString& /*action*/, const QVariantList& /*parameter*/,
    const QVariantMap& /*platformData*/)
{
    Q_EMIT activated();
}
