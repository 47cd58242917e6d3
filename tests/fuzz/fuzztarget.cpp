// SPDX-License-Identifier: BSD-3-Clause
#include "fuzztarget.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

std::vector<const char*>& allowedWarnings()
{
    static std::vector<const char*> texts;
    return texts;
}

void checkMessage(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtDebugMsg || type == QtInfoMsg) {
        return;
    }
    const std::vector<const char*>& texts = allowedWarnings();
    const bool isAllowed = type == QtWarningMsg
        && std::any_of(texts.begin(), texts.end(),
                       [&](const char* text) { return message.startsWith(QLatin1String(text)); });
    if (!isAllowed) {
        fprintf(stderr, "stray message: %s\n", qPrintable(message));
        abort();
    }
}

} // namespace

void require(bool holds, const char* property)
{
    if (!holds) {
        fprintf(stderr, "does not hold: %s\n", property);
        abort();
    }
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    require(
        file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush(),
        "file can be written");
}

void allowNoWarningsBut(std::initializer_list<const char*> texts)
{
    allowedWarnings() = texts;
    qInstallMessageHandler(checkMessage);
}
