// SPDX-License-Identifier: BSD-3-Clause
#include "envelope.h"

#include <QJsonDocument>

namespace {

constexpr int FormatVersion = 1;

QString statusName(ExitStatus status)
{
    switch (status) {
    case ExitStatus::Done:
        return QStringLiteral("done");
    case ExitStatus::Failed:
        return QStringLiteral("failed");
    case ExitStatus::Usage:
        return QStringLiteral("usage");
    case ExitStatus::NoDaemon:
        return QStringLiteral("no-daemon");
    case ExitStatus::TimedOut:
        return QStringLiteral("timed-out");
    }
    return {};
}

} // namespace

QString jsonLine(const char* command, const Outcome& outcome)
{
    const QJsonObject object{
        {QStringLiteral("format"), FormatVersion},
        {QStringLiteral("command"), command ? QJsonValue(QLatin1String(command)) : QJsonValue()},
        {QStringLiteral("status"), statusName(outcome.status)},
        {QStringLiteral("error"),
         outcome.error.isEmpty() ? QJsonValue() : QJsonValue(outcome.error)},
        {QStringLiteral("result"), outcome.result}};
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact))
        + QLatin1Char('\n');
}
