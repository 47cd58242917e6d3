// SPDX-License-Identifier: BSD-3-Clause
#include "storetexts.h"

#include <dconfstore.h>
#include <gvariantconversion.h>

#include <QDBusConnection>
#include <QDBusMessage>

namespace {

bool isKey(const QString& name)
{
    return name.startsWith(QLatin1Char('/'));
}

QJsonValue toJson(const GVariantPointer& value)
{
    const QVariant text = value ? fromGVariant(value.get()) : QVariant();
    return text.type() == QVariant::String ? QJsonValue(text.toString()) : QJsonValue();
}

} // namespace

QJsonValue StoreTexts::userValue(const QString& key)
{
    return toJson(DconfStore::instance().readUserValue(key.toUtf8()));
}

// The service answers in the order in which it is asked. This call changes nothing.
void StoreTexts::settle()
{
    constexpr int limitMs = 5000;
    const QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("ca.desrt.dconf"), QStringLiteral("/ca/desrt/dconf/Writer/user"),
        QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Init"));
    // Without an answer, the store is as settled as it gets.
    static_cast<void>(QDBusConnection::sessionBus().call(call, QDBus::Block, limitMs));
}

void StoreTexts::flush()
{
    DconfStore::instance().sync();
}

QString StoreTexts::write(const QJsonObject& values)
{
    std::map<QByteArray, GVariantPointer> changes;
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (isKey(value.key())) {
            changes[value.key().toUtf8()] =
                value.value().isString() ? toGVariant(value.value().toString()) : nullptr;
        }
    }
    return DconfStore::instance().write(changes)
        ? QString()
        : QStringLiteral("The key/value store cannot be written.");
}

QJsonObject StoreTexts::saveUserValues(
    const QJsonObject& plan, const AdapterRecord& record, const QString& ownBeginning)
{
    QJsonObject saved = record.saved;
    for (auto planned = plan.begin(); planned != plan.end(); ++planned) {
        const QString& key = planned.key();
        if (!isKey(key)) {
            continue;
        }
        const QJsonValue current = userValue(key);
        if (record.isOwn(key, current) || current.toString().startsWith(ownBeginning)) {
            if (!saved.contains(key)) {
                saved.insert(key, QJsonValue());
            }
        } else {
            saved.insert(key, current);
        }
    }
    return saved;
}

QString StoreTexts::difference(const QJsonObject& plan)
{
    for (auto planned = plan.begin(); planned != plan.end(); ++planned) {
        if (isKey(planned.key()) && userValue(planned.key()) != planned.value()) {
            return QStringLiteral("The key/value store did not keep %1.").arg(planned.key());
        }
    }
    return {};
}

QString StoreTexts::restore(const AdapterRecord& record)
{
    QJsonObject values;
    for (auto saved = record.saved.begin(); saved != record.saved.end(); ++saved) {
        if (isKey(saved.key()) && record.isOwn(saved.key(), userValue(saved.key()))) {
            values.insert(saved.key(), saved.value());
        }
    }
    return write(values);
}
