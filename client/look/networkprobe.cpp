// SPDX-License-Identifier: BSD-3-Clause
#include "networkprobe.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <pictureformat.h>

namespace {

/// Enough bytes to recognise any format.
constexpr int Beginning = 4096;

QJsonObject faultOf(const char* fault, const QString& detail)
{
    return {{QStringLiteral("fault"), QLatin1String(fault)}, {QStringLiteral("detail"), detail}};
}

QJsonObject judged(QNetworkReply* reply)
{
    if (reply->error() != QNetworkReply::NoError
        && reply->error() != QNetworkReply::OperationCanceledError) {
        return faultOf("error", reply->errorString());
    }
    const QVariant target = reply->attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (target.isValid()) {
        return faultOf("redirected", reply->url().resolved(target.toUrl()).toDisplayString());
    }
    if (pictureFormat(reply->peek(PictureSignatureSize)) == PictureFormat::Unknown) {
        return faultOf("no-picture", reply->header(QNetworkRequest::ContentTypeHeader).toString());
    }
    return {{QStringLiteral("fault"), QString()}};
}

} // namespace

QJsonObject probeAddress(const QUrl& url, int timeoutMs)
{
    QNetworkAccessManager network;
    network.setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    QNetworkReply* const reply = network.get(QNetworkRequest(url));
    reply->setReadBufferSize(Beginning);
    QEventLoop loop;
    bool isLate = false;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(reply, &QNetworkReply::readyRead, &loop, [&] {
        if (reply->bytesAvailable() >= Beginning) {
            loop.quit();
        }
    });
    QTimer::singleShot(timeoutMs, &loop, [&] {
        isLate = true;
        loop.quit();
    });
    loop.exec();
    QJsonObject judgement = isLate ? faultOf("timeout", QString()) : judged(reply);
    reply->abort();
    return judgement;
}
