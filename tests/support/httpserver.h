// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QSslConfiguration>
#include <QStringList>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QUrl>

class QTcpSocket;

/// Plays a web server on this machine, on a port of its own. It answers what it was told to, once
/// per connection, and 404 to anything else; it runs on the test's event loop.
class HttpServer : public QTcpServer
{
    Q_OBJECT

public:
    enum class Transport {
        Plain, ///< http
        UntrustedCertificate, ///< https, with a certificate that vouches for itself
    };

    /// A server that listens. Fails the current test if it cannot.
    explicit HttpServer(Transport transport = Transport::Plain);

    /// The address of a path, which begins with "/".
    [[nodiscard]] QUrl url(const QString& path) const;

    /// Answers requests for a path from now on. `headers` are whole lines, each with its end.
    void answer(
        const QString& path, const QByteArray& body, const QByteArray& status = "200 OK",
        const QByteArray& headers = {});
    /// Cuts the connections of requests for a path.
    void hangUp(const QString& path);

    /// Keeps back the second half of the body for a path until release() or breakOff().
    void hold(const QString& path);
    /// Sends what was kept back.
    void release(const QString& path);
    /// Cuts the connection instead, and those of later requests for the path.
    void breakOff(const QString& path);
    /// Whether a request for a held path has come.
    [[nodiscard]] bool isHolding(const QString& path) const;

    /// The paths that were asked for, oldest first.
    [[nodiscard]] QStringList requests() const { return m_requests; }

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    struct Answer
    {
        QByteArray head;
        QByteArray body;
    };
    struct HeldBody
    {
        QPointer<QTcpSocket> socket;
        QByteArray rest;
    };

    void makeCertificate();
    HeldBody takeHeldBody(const QString& path);
    void read(QTcpSocket* socket);
    void reply(QTcpSocket* socket, const QString& path);

    const Transport m_transport;
    QTemporaryDir m_folder;
    QSslConfiguration m_security;
    QHash<QString, Answer> m_answers;
    QSet<QString> m_hungUp;
    QSet<QString> m_held;
    QHash<QString, HeldBody> m_heldBodies;
    QHash<QTcpSocket*, QByteArray> m_unfinished;
    QStringList m_requests;
};
