// SPDX-License-Identifier: BSD-3-Clause
#include "jsonschema.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

namespace {

constexpr int AnswerMs = 30000;

} // namespace

JsonSchema::JsonSchema(const QString& path)
{
    m_checker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_checker.start(QStringLiteral(CHECK_SCHEMA), {path, QStringLiteral("--stream")});
}

JsonSchema::~JsonSchema()
{
    m_checker.closeWriteChannel();
    m_checker.waitForFinished(AnswerMs);
}

QJsonArray JsonSchema::faults(const QByteArray& text)
{
    m_checker.write(QByteArray::number(text.size()) + '\n' + text);
    while (!m_checker.canReadLine()) {
        if (!m_checker.waitForReadyRead(AnswerMs)) {
            return {
                QStringLiteral("The schema checker does not answer: ") + m_checker.errorString()};
        }
    }
    const QJsonDocument answer = QJsonDocument::fromJson(m_checker.readLine());
    return answer.isArray() ? answer.array()
                            : QJsonArray{QStringLiteral("The schema checker answers no list")};
}
