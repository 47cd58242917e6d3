// SPDX-License-Identifier: BSD-3-Clause
#include "httpserver.h"

#include "failunless.h"

#include <QFile>
#include <QHostAddress>
#include <QProcess>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTest>

namespace {

QByteArray content(const QString& path)
{
    QFile file(path);
    failUnless(file.open(QIODevice::ReadOnly), "Cannot read the server's certificate");
    return file.readAll();
}

} // namespace

HttpServer::HttpServer(Transport transport)
    : m_transport(transport)
{
    if (transport == Transport::UntrustedCertificate) {
        makeCertificate();
    }
    failUnless(listen(QHostAddress::LocalHost), "The server cannot listen");
}

QUrl HttpServer::url(const QString& path) const
{
    QUrl url;
    url.setScheme(
        m_transport == Transport::Plain ? QStringLiteral("http") : QStringLiteral("https"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(serverPort());
    url.setPath(path);
    return url;
}

void HttpServer::answer(
    const QString& path, const QByteArray& body, const QByteArray& status,
    const QByteArray& headers)
{
    const QByteArray length = QByteArray::number(body.size());
    m_answers[path] = {
        "HTTP/1.1 " + status + "\r\nConnection: close\r\nContent-Length: " + length + "\r\n"
            + headers + "\r\n",
        body};
}

void HttpServer::hangUp(const QString& path)
{
    m_hungUp.insert(path);
}

void HttpServer::hold(const QString& path)
{
    m_held.insert(path);
}

void HttpServer::release(const QString& path)
{
    const HeldBody held = takeHeldBody(path);
    if (held.socket) {
        held.socket->write(held.rest);
        held.socket->disconnectFromHost();
    }
}

void HttpServer::breakOff(const QString& path)
{
    const HeldBody held = takeHeldBody(path);
    if (held.socket) {
        held.socket->abort();
    }
    // The client sends the request again.
    hangUp(path);
}

HttpServer::HeldBody HttpServer::takeHeldBody(const QString& path)
{
    m_held.remove(path);
    HeldBody held = m_heldBodies.take(path);
    failUnless(!held.socket.isNull(), "Nobody waits for the body");
    return held;
}

bool HttpServer::isHolding(const QString& path) const
{
    return m_heldBodies.contains(path);
}

void HttpServer::incomingConnection(qintptr descriptor)
{
    auto* const socket = new QSslSocket(this);
    connect(socket, &QSslSocket::readyRead, this, [this, socket] { read(socket); });
    connect(socket, &QSslSocket::disconnected, this, [this, socket] {
        m_unfinished.remove(socket);
        socket->deleteLater();
    });
    failUnless(socket->setSocketDescriptor(descriptor), "The server cannot take a connection");
    if (m_transport == Transport::UntrustedCertificate) {
        socket->setSslConfiguration(m_security);
        socket->startServerEncryption();
    }
}

void HttpServer::makeCertificate()
{
    const QString key = m_folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = m_folder.filePath(QStringLiteral("certificate.pem"));
    const int exitCode = QProcess::execute(
        QStringLiteral("openssl"),
        {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
         QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
         QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
         QStringLiteral("-keyout"), key, QStringLiteral("-out"), certificate,
         QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-addext"),
         QStringLiteral("subjectAltName=IP:127.0.0.1")});
    failUnless(exitCode == 0, "Cannot make the server's certificate");
    m_security = QSslConfiguration::defaultConfiguration();
    m_security.setPrivateKey(QSslKey(content(key), QSsl::Ec));
    m_security.setLocalCertificate(QSslCertificate(content(certificate)));
}

void HttpServer::read(QTcpSocket* socket)
{
    QByteArray& request = m_unfinished[socket];
    request += socket->readAll();
    if (!request.endsWith("\r\n\r\n")) {
        return;
    }
    const QString path = QString::fromUtf8(request.split(' ').value(1));
    m_unfinished.remove(socket);
    m_requests.append(path);
    reply(socket, path);
}

void HttpServer::reply(QTcpSocket* socket, const QString& path)
{
    if (m_hungUp.contains(path)) {
        socket->abort();
        return;
    }
    const Answer notFound{
        "HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n", {}};
    const Answer answer = m_answers.value(path, notFound);
    if (m_held.contains(path)) {
        const int half = answer.body.size() / 2;
        socket->write(answer.head + answer.body.left(half));
        m_heldBodies[path] = {socket, answer.body.mid(half)};
        return;
    }
    socket->write(answer.head + answer.body);
    socket->disconnectFromHost();
}
