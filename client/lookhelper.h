// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QUrl>

/// Runs the program that examines pictures and addresses. client/look/lookrequest.h describes its
/// requests and replies. If a picture makes the program crash, or needs more memory than the daemon
/// may have, only that program ends.
class LookHelper
{
public:
    LookHelper();
    ~LookHelper();
    Q_DISABLE_COPY_MOVE(LookHelper)

    /// Sends a request and waits for the reply, which is {"fault": "crashed"} if there is none.
    static QJsonObject ask(const QJsonObject& request);

    /// Sends a request, and does not wait.
    void start(const QJsonObject& request);
    /// Whether the reply has come.
    bool isDone();
    /// The reply, once it has come.
    QJsonObject reply();

private:
    QProcess m_process;
};

/// The reason why the daemon cannot make wallpapers from a local picture, in one line. Empty if
/// none was found.
QString pictureFault(const QString& path);

/// The fault of an address according to a reply of LookHelper, in one line. Empty if there is none.
QString addressFault(const QJsonObject& reply);
