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

/// Plays a web server on this machine, on a free port. It gives the answers that were set, one per
/// connection, and 404 for anything else. It runs on the test's event loop.
class HttpServer : public QTcpServer
{
    Q_OBJECT

public:
    enum class Transport {
        Plain, ///< http
        UntrustedCertificate, ///< https, with a self-signed certificate
    };

    /// Starts to listen. Fails the current test if this is not possible.
    explicit HttpServer(Transport transport = Transport::Plain);

    /// The URL of a path, which must begin with "/".
    QUrl url(const QString& path) const;

    /// Sets the answer for a path. `headers` are whole lines, each with its line break.
    void answer(
        const QString& path, const QByteArray& body, const QByteArray& status = "200 OK",
        const QByteArray& headers = {});
    /// Closes the connections of requests for a path.
    void hangUp(const QString& path);

    /// Sends only the first half of the body for a path until release() or breakOff().
    void hold(const QString& path);
    /// Sends the second half.
    void release(const QString& path);
    /// Closes the connection without the second half, and those of later requests for the path.
    void breakOff(const QString& path);
    /// Whether a request for a held path has arrived.
    bool isHolding(const QString& path) const;

    /// The requested paths, in their order.
    QStringList requests() const { return m_requests; }

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
