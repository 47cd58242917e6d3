// SPDX-License-Identifier: BSD-3-Clause
#include "statusreport.h"

#include <QJsonArray>
#include <QTextStream>

namespace {

QString presence(const AdapterState& state, bool isRunning)
{
    if (!isRunning || state.setting == QLatin1String("off")) {
        return {};
    }
    return state.isPresent ? QStringLiteral(", present") : QStringLiteral(", not present");
}

/// Makes one line of any text.
QString oneLine(QString text)
{
    for (QChar& character : text) {
        if (!character.isPrint()) {
            character = QLatin1Char('?');
        }
    }
    return text;
}

} // namespace

QJsonObject statusToJson(const StateRecord& state, bool isRunning)
{
    QJsonArray adapters;
    for (auto adapter = state.adapters.cbegin(); adapter != state.adapters.cend(); ++adapter) {
        QJsonObject object{
            {QStringLiteral("name"), adapter.key()},
            {QStringLiteral("enabled"), adapter->setting},
            {QStringLiteral("set"), adapter->record.set},
            {QStringLiteral("time"), adapter->time},
            {QStringLiteral("failure"), adapter->failure},
        };
        object.insert(
            QStringLiteral("present"), isRunning ? QJsonValue(adapter->isPresent) : QJsonValue());
        adapters.append(object);
    }
    return {{QStringLiteral("running"), isRunning}, {QStringLiteral("adapters"), adapters}};
}

QString statusToText(const StateRecord& state, bool isRunning)
{
    QString text;
    QTextStream lines(&text);
    lines << (isRunning ? "moodset-bridge runs.\n" : "moodset-bridge does not run.\n");
    for (auto adapter = state.adapters.cbegin(); adapter != state.adapters.cend(); ++adapter) {
        lines << adapter.key() << ": " << adapter->setting << presence(*adapter, isRunning) << '\n';
        if (!adapter->time.isEmpty()) {
            lines << "    last set at " << adapter->time << '\n';
        }
        const QJsonObject& set = adapter->record.set;
        for (auto value = set.begin(); value != set.end(); ++value) {
            lines << "    " << oneLine(value.key()) << ": " << oneLine(value.value().toString())
                  << '\n';
        }
        if (!adapter->failure.isEmpty()) {
            lines << "    problem: " << oneLine(adapter->failure) << '\n';
        }
    }
    return text;
}
