// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonArray>
#include <QProcess>

class QByteArray;
class QString;

/// A JSON schema, with a program of its own that checks texts against it as long as the object
/// lives.
class JsonSchema
{
public:
    explicit JsonSchema(const QString& path);
    /// Ends the program.
    ~JsonSchema();
    Q_DISABLE_COPY_MOVE(JsonSchema)

    /// What is wrong with a text: nothing, if it is JSON that keeps to the schema. Waits for the
    /// answer for 30 seconds at most; the event loop does not run during this time.
    QJsonArray faults(const QByteArray& text);

private:
    QProcess m_checker;
};
