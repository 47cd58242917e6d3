// SPDX-License-Identifier: BSD-3-Clause
#include "clientsession.h"
#include "encodedpicture.h"
#include "httpserver.h"

#include <QImage>
#include <QTest>

/// Tests what moodsetctl reports about pictures on the network, for which the daemon gives no
/// result.
class ClientNetworkTest : public QObject
{
    Q_OBJECT

private:
    using Result = ClientSession::Result;

    static QByteArray picture()
    {
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        return encodedPicture(image, "png");
    }

    static Result set(const QUrl& url, const QStringList& options = {})
    {
        return ClientSession::runJson(
            QStringList({QStringLiteral("set"), url.toString()}) + options);
    }

    static void failsWith(const Result& result, int exitCode, const QString& reason)
    {
        QCOMPARE(result.exitCode, exitCode);
        QVERIFY2(result.errors.contains(reason), qPrintable(result.errors));
    }

private Q_SLOTS:
    void waitsForAPictureAndThenKnowsIt()
    {
        ClientSession session;
        HttpServer server;
        server.answer(QStringLiteral("/sea.png"), picture());

        const Result first = set(server.url(QStringLiteral("/sea.png")));

        QCOMPARE(first.errors, QString());
        QCOMPARE(first.exitCode, 0);
        QVERIFY(UserStore::value(QStringLiteral("/desktop/zavro/theme/active_moodset"))
                    .endsWith(QStringLiteral("online_img0.jpg'")));
        const int requests = server.requests().size();
        QCOMPARE(set(server.url(QStringLiteral("/sea.png"))).exitCode, 0);
        QCOMPARE(server.requests().size(), requests);
    }

    void saysThatACertificateIsNotTrusted()
    {
        ClientSession session;
        HttpServer server(HttpServer::Transport::UntrustedCertificate);
        server.answer(QStringLiteral("/sea.png"), picture());

        failsWith(
            set(server.url(QStringLiteral("/sea.png"))), 1,
            QStringLiteral("the address does not answer as it should: SSL handshake failed"));
    }

    void saysWhatIsAtTheAddress()
    {
        ClientSession session;
        HttpServer server;
        server.answer(QStringLiteral("/words"), "words", "200 OK", "Content-Type: text/plain\r\n");
        server.answer(
            QStringLiteral("/moved"), "", "302 Found",
            "Location: " + server.url(QStringLiteral("/sea.png")).toEncoded() + "\r\n");

        failsWith(
            set(server.url(QStringLiteral("/words"))), 1,
            QStringLiteral("there is no picture at the address, but text/plain"));
        failsWith(
            set(server.url(QStringLiteral("/moved"))), 1,
            QStringLiteral("the address points to another one, which the daemon does not follow: ")
                + server.url(QStringLiteral("/sea.png")).toString());
        failsWith(set(server.url(QStringLiteral("/none"))), 1, QStringLiteral("server replied:"));
    }

    void givesUpInTime()
    {
        ClientSession session;
        HttpServer server;
        server.answer(QStringLiteral("/sea.png"), picture());
        server.hold(QStringLiteral("/sea.png"));
        const QUrl url = server.url(QStringLiteral("/sea.png"));

        failsWith(
            set(url, {QStringLiteral("--timeout"), QStringLiteral("0.5")}), 4,
            QStringLiteral("the time limit has passed"));
        const Result unawaited = set(url, {QStringLiteral("--no-wait")});

        QCOMPARE(unawaited.exitCode, 0);
        QCOMPARE(unawaited.result().value(QLatin1String("waited")), QJsonValue(false));
    }

    void refusesOtherAddresses()
    {
        ClientSession session;
        failsWith(
            set(QUrl(QStringLiteral("ftp://127.0.0.1/sea.png"))), 1,
            QStringLiteral("not a file URL, nor one of the network"));
        failsWith(
            ClientSession::runJson(
                {QStringLiteral("colors"), QStringLiteral("http://127.0.0.1/sea.png")}),
            1, QStringLiteral("download the picture first"));
    }
};

QTEST_GUILESS_MAIN(ClientNetworkTest)

#include "tst_clientnetwork.moc"
