// SPDX-License-Identifier: BSD-3-Clause
#include "daemonsession.h"
#include "librarylock.h"
#include "picturefile.h"

#include <QDBusVariant>
#include <QProcess>
#include <QTest>

/// Tests which calls the daemon's object on the bus accepts and rejects, and what it announces.
class BusInterfaceTest : public QObject
{
    Q_OBJECT

private:
    const QString m_path = QStringLiteral("/com/zavro/moodsetd");
    const QString m_interface = QStringLiteral("com.zavro.moodsetd");
    const QString m_source = QStringLiteral("http://example.org/a.jpg");

    /// Runs a client that does not use Qt, and returns what it prints.
    static QString runClient(const QString& program, const QStringList& arguments)
    {
        QProcess client;
        client.setProcessChannelMode(QProcess::MergedChannels);
        client.start(program, arguments);
        if (!client.waitForFinished(DaemonProcess::deadlineMs)) {
            return client.errorString();
        }
        return QString::fromUtf8(client.readAll()).trimmed();
    }

    QString gdbusCall(const QString& method, const QStringList& arguments) const
    {
        return runClient(
            QStringLiteral("gdbus"),
            QStringList{
                QStringLiteral("call"), QStringLiteral("--session"), QStringLiteral("--dest"),
                m_interface, QStringLiteral("--object-path"), m_path, QStringLiteral("--method"),
                m_interface + QLatin1Char('.') + method}
                + arguments);
    }

    QString dbusSend(const QString& method, const QStringList& arguments) const
    {
        return runClient(
            QStringLiteral("dbus-send"),
            QStringList{
                QStringLiteral("--session"), QStringLiteral("--print-reply=literal"),
                QStringLiteral("--dest=") + m_interface, m_path,
                m_interface + QLatin1Char('.') + method}
                + arguments);
    }

    static QString source(DaemonSession& session, qint64 id)
    {
        return session.library()
            .value(
                QStringLiteral("SELECT COALESCE(source, '') FROM download WHERE fileId = ?"), {id})
            .toString();
    }

    static QVariantMap sourceAttribute(const QString& source)
    {
        return {{QStringLiteral("source"), source}};
    }

    /// Sends several calls at once, and returns the announcements. A call that is announced with
    /// type 4 comes first.
    static QList<int> announcementsOfBurst(
        DaemonSession& session, const std::function<void()>& makeCalls)
    {
        {
            const LibraryLock lock;
            BusClient::send(
                QStringLiteral("saveAttributes"),
                {4, 1LL, sourceAttribute(QStringLiteral("http://example.org/burst"))});
            makeCalls();
            if (!lock.isHeld() || !BusClient::ping()) {
                return {-1};
            }
        }
        // All types of a burst are announced at once, so that none comes after a later reply.
        if (!QTest::qWaitFor(
                [&] { return session.client.announcements().contains(4); },
                DaemonProcess::deadlineMs)) {
            return {-2};
        }
        BusClient::isAnswered();
        return session.client.announcements();
    }

private Q_SLOTS:
    void answersEveryMethodWithAnEmptyReply_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        const QVariantList aUrl{QStringLiteral("file:///none/a.jpg")};
        QTest::newRow("indexFile") << QStringLiteral("indexFile") << aUrl;
        QTest::newRow("remove") << QStringLiteral("remove") << QVariantList{0, 1LL};
        QTest::newRow("remove of no such type")
            << QStringLiteral("remove") << QVariantList{99, 1LL};
        QTest::newRow("remove of a negative type")
            << QStringLiteral("remove") << QVariantList{-1, -1LL};
        QTest::newRow("installPackage")
            << QStringLiteral("installPackage") << QVariantList{QStringLiteral("/none")};
        QTest::newRow("saveAttributes")
            << QStringLiteral("saveAttributes") << QVariantList{0, 1LL, QVariantMap()};
        QTest::newRow("saveAttributes of no such type")
            << QStringLiteral("saveAttributes") << QVariantList{3, 1LL, QVariantMap()};
        QTest::newRow("refreshMoodsets") << QStringLiteral("refreshMoodsets") << QVariantList();
    }

    void answersEveryMethodWithAnEmptyReply()
    {
        QFETCH(QString, method);
        QFETCH(QVariantList, arguments);
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QDBusMessage reply = BusClient::call(method, arguments);

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(reply.arguments(), QVariantList());
    }

    void refusesCallsThatMatchNoMethod_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("interface");
        QTest::addColumn<QString>("method");
        QTest::addColumn<QVariantList>("arguments");
        QTest::addColumn<QString>("error");
        const QString unknownMethod = QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
        const QString unknownInterface =
            QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface");
        const QString unknownObject = QStringLiteral("org.freedesktop.DBus.Error.UnknownObject");
        const QString text = QStringLiteral("text");
        const auto row = [&](const char* name, const QString& method,
                             const QVariantList& arguments) {
            QTest::newRow(name) << m_path << m_interface << method << arguments << unknownMethod;
        };
        row("a number for a URL", QStringLiteral("indexFile"), {1});
        row("no URL", QStringLiteral("setMoodset"), {});
        row("two URLs", QStringLiteral("createMoodset"), {text, text});
        row("a text for a type", QStringLiteral("remove"), {text, 1LL});
        row("a short id", QStringLiteral("remove"), {1, 1});
        row("no id", QStringLiteral("remove"), {1});
        row("an unsigned type", QStringLiteral("remove"), {1U, 1LL});
        row("a list of paths", QStringLiteral("installPackage"), {QStringList{text}});
        row("a path in a variant", QStringLiteral("installPackage"),
            {QVariant::fromValue(QDBusVariant(text))});
        row("attributes for none", QStringLiteral("refreshMoodsets"), {QVariantMap()});
        row("no attributes", QStringLiteral("saveAttributes"), {4, 1LL});
        row("a text for attributes", QStringLiteral("saveAttributes"), {4, 1LL, text});
        row("more than attributes", QStringLiteral("saveAttributes"),
            {4, 1LL, QVariantMap(), text});
        row("a slot that is not exported", QStringLiteral("moodsetInstalled"), {text, text});
        row("the signal", QStringLiteral("contentChanged"), {1});
        row("a method of QObject", QStringLiteral("deleteLater"), {});
        row("no such method", QStringLiteral("indexfile"), {text});
        QTest::newRow("no such interface")
            << m_path << QStringLiteral("com.zavro.other") << QStringLiteral("indexFile")
            << QVariantList{text} << unknownInterface;
        QTest::newRow("no such object")
            << m_path + QStringLiteral("/other") << m_interface << QStringLiteral("indexFile")
            << QVariantList{text} << unknownObject;
    }

    void refusesCallsThatMatchNoMethod()
    {
        QFETCH(QString, path);
        QFETCH(QString, interface);
        QFETCH(QString, method);
        QFETCH(QVariantList, arguments);
        QFETCH(QString, error);
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QDBusMessage reply = BusClient::callObject(path, interface, method, arguments);

        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(reply.errorName(), error);
        QVERIFY(BusClient::isAnswered());
        QVERIFY(session.daemon.isRunning());
    }

    void refusesAMapOfTextsFromAnotherClient()
    {
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QString output = dbusSend(
            QStringLiteral("saveAttributes"),
            {QStringLiteral("int32:4"), QStringLiteral("int64:7"),
             QStringLiteral("dict:string:string:source,text")});

        const QString expected = QStringLiteral(
            "Error org.freedesktop.DBus.Error.UnknownMethod: No such method 'saveAttributes' in "
            "interface 'com.zavro.moodsetd' at object path '/com/zavro/moodsetd' (signature "
            "'ixa{ss}')");
        QCOMPARE(output, expected);
        QVERIFY(BusClient::isAnswered());
    }

    void answersAnotherClient()
    {
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QString output =
            dbusSend(QStringLiteral("indexFile"), {QStringLiteral("string:file:///none/a.jpg")});

        QCOMPARE(output, QString());
        QVERIFY(BusClient::isAnswered());
    }

    void warnsOfAnInvalidUrl_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("printedUrl");
        for (const auto& method : {QStringLiteral("setMoodset"), QStringLiteral("createMoodset")}) {
            const auto row = [&](const char* name, const QString& url, const QString& printedUrl) {
                QTest::addRow("%s, %s", qPrintable(method), name) << method << url << printedUrl;
            };
            row("empty", QString(), QStringLiteral("\"\""));
            row("bad port", QStringLiteral("http://host:port/"),
                QStringLiteral("\"http://host:port/\""));
            row("bad host", QStringLiteral("http://[/"), QStringLiteral("\"http://[/\""));
            row("quotes and a line break", QStringLiteral("http://a\"\nb/"),
                QStringLiteral("\"http://a\\\"\\nb/\""));
        }
    }

    void warnsOfAnInvalidUrl()
    {
        QFETCH(QString, method);
        QFETCH(QString, url);
        QFETCH(QString, printedUrl);
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QDBusMessage reply = BusClient::call(method, {url});

        const QString signature =
            QStringLiteral("void AlbumGallery::%1(const QString&)").arg(method);
        const QString warning = QStringLiteral("%1 Invalid URL:  %2").arg(signature, printedUrl);
        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QVERIFY(session.daemon.waitForLine(warning));
        QCOMPARE(session.daemon.takeWarnings(), QStringList{warning});
        QVERIFY(session.daemon.lines().contains(
            QStringLiteral("debug: %1 %2").arg(signature, printedUrl)));
    }

    void savesTheSourceOfADownload()
    {
        DaemonSession session;
        QVERIFY(session.startOnBus());

        BusClient::call(
            QStringLiteral("saveAttributes"),
            {4, 7LL, sourceAttribute(QStringLiteral("http://example.org/first"))});
        BusClient::call(QStringLiteral("saveAttributes"), {4, 7LL, sourceAttribute(m_source)});
        BusClient::call(
            QStringLiteral("saveAttributes"),
            {4, 7LL, QVariantMap{{QStringLiteral("other"), QStringLiteral("text")}}});

        QCOMPARE(source(session, 7), m_source);
    }

    void savesTheSourceAmongOddAttributesOfAnotherClient_data()
    {
        QTest::addColumn<QString>("attribute");
        const auto row = [](const char* attribute) {
            QTest::newRow(attribute) << QString::fromLatin1(attribute);
        };
        row("'text'");
        row("true");
        row("1.5");
        row("objectpath '/a'");
        row("<'in a variant'>");
        row("<<'in two variants'>>");
        row("@as []");
        row("['a', 'b']");
        row("@ay []");
        row("[byte 1, 2]");
        row("[1, 2]");
        row("@av []");
        row("[<1>, <'a'>]");
        row("[<[<1>]>]");
        row("(1, 'a')");
        row("[(1, 'a')]");
        row("@a{sv} {}");
        row("{'a': <1>}");
        row("{'a': <{'b': <{'c': <'d'>}>}>}");
        row("{'a': <[<1>, <{'b': <2>}>]>}");
        row("{'a': <(1, 'a')>}");
        row("{'a': {'b': 'c'}}");
        row("@a{ss} {}");
        row("{'a': 'b'}");
        row("{'a': 1}");
        row("{1: 'a'}");
        row("{'a': (1, 'b')}");
        row("{'a': ['b']}");
        row("{'a': [<1>]}");
        row("{'a': [1, 2]}");
        row("{'a': {1: <'b'>}}");
        row("{'a': <{'b': 'c'}>}");
    }

    void savesTheSourceAmongOddAttributesOfAnotherClient()
    {
        QFETCH(QString, attribute);
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QString output = gdbusCall(
            QStringLiteral("saveAttributes"),
            {QStringLiteral("4"), QStringLiteral("7"),
             QStringLiteral("{'odd': <%1>, 'source': <'%2'>}").arg(attribute, m_source)});

        QCOMPARE(output, QStringLiteral("()"));
        QCOMPARE(source(session, 7), m_source);
        QVERIFY(BusClient::isAnswered());
    }

    void savesNoTextForASourceOfAnotherType_data()
    {
        QTest::addColumn<QString>("attribute");
        for (const char* attribute :
             {"1", "[<'a'>]", "{'a': 'b'}", "{'a': <'b'>}", "(1, 'a')", "''", "@as []"}) {
            QTest::newRow(attribute) << QString::fromLatin1(attribute);
        }
    }

    void savesNoTextForASourceOfAnotherType()
    {
        QFETCH(QString, attribute);
        DaemonSession session;
        QVERIFY(session.startOnBus());

        const QString output = gdbusCall(
            QStringLiteral("saveAttributes"),
            {QStringLiteral("4"), QStringLiteral("7"),
             QStringLiteral("{'source': <%1>}").arg(attribute)});

        QCOMPARE(output, QStringLiteral("()"));
        QCOMPARE(source(session, 7), QString());
    }

    void survivesAttributesThatNestDeeply()
    {
        DaemonSession session;
        QVERIFY(session.startOnBus());
        // The bus allows a depth of 64 for all containers together, and each level here is three.
        QString attribute = QStringLiteral("1");
        for (int level = 0; level < 20; ++level) {
            attribute = QStringLiteral("{'a': <%1>}").arg(attribute);
        }

        const QString output = gdbusCall(
            QStringLiteral("saveAttributes"),
            {QStringLiteral("4"), QStringLiteral("7"),
             QStringLiteral("{'odd': <%1>, 'source': <'%2'>}").arg(attribute, m_source)});

        QCOMPARE(output, QStringLiteral("()"));
        QCOMPARE(source(session, 7), m_source);
    }

    void removesNothingOfATypeThatCannotBeRemoved_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("file") << 0;
        QTest::newRow("image") << 2;
        QTest::newRow("download") << 4;
    }

    void removesNothingOfATypeThatCannotBeRemoved()
    {
        QFETCH(int, type);
        DaemonSession session;
        const QString picture = session.folders.picture(QStringLiteral("a.png"));
        QVERIFY(writePicture(picture, QSize(3, 2)));
        QVERIFY(session.start());
        const qint64 id = session.fileId(picture);
        BusClient::call(QStringLiteral("saveAttributes"), {4, id, sourceAttribute(m_source)});

        const QDBusMessage reply = BusClient::call(QStringLiteral("remove"), {type, id});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(session.fileId(picture), id);
        QCOMPARE(session.pictureSize(picture), QSize(3, 2));
        QCOMPARE(source(session, id), m_source);
    }

    void entersAFileByItsUrl_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("enteredName");
        const auto row = [](const char* name, const char* fileName, const char* url,
                            const char* enteredName) {
            QTest::newRow(name) << QString::fromUtf8(fileName) << QString::fromUtf8(url)
                                << QString::fromUtf8(enteredName);
        };
        row("plain", "a.png", "file://%1/a.png", "a.png");
        row("scheme in capitals", "a.png", "FILE://%1/a.png", "a.png");
        row("one slash", "a.png", "file:%1/a.png", "a.png");
        row("host of this machine", "a.png", "file://localhost%1/a.png", "");
        row("encoded", "a b#c?d%e.png", "file://%1/a%20b%23c%3Fd%25e.png", "a b#c?d%e.png");
        row("not encoded", "a bé.png", "file://%1/a bé.png", "a bé.png");
        row("encoded UTF-8", "é.png", "file://%1/%C3%A9.png", "é.png");
        row("cut at a hash", "a", "file://%1/a#b.png", "a");
        row("cut at a question mark", "a", "file://%1/a?b.png", "a");
        row("with dots", "a.png", "file://%1/../elsewhere/a.png", "a.png");
        row("no scheme", "a.png", "%1/a.png", "");
        row("another scheme", "a.png", "http://host%1/a.png", "");
        row("a resource", "a.png", "qrc:%1/a.png", "");
        row("no such file", "a.png", "file://%1/b.png", "");
        row("empty", "a.png", "", "");
    }

    void entersAFileByItsUrl()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, url);
        QFETCH(QString, enteredName);
        DaemonSession session;
        QVERIFY(writePicture(session.folders.elsewhere(fileName), QSize(3, 2)));
        QVERIFY(session.start());
        if (url.contains(QLatin1String("%1"))) {
            url.replace(QLatin1String("%1"), session.folders.elsewhere());
        }

        const QDBusMessage reply = BusClient::call(QStringLiteral("indexFile"), {url});

        QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
        const QStringList expected = enteredName.isEmpty()
            ? QStringList()
            : QStringList{session.folders.elsewhere(enteredName)};
        QCOMPARE(session.libraryFiles(), expected);
    }

    void followsAFileEnteredByItsUrlAlone()
    {
        DaemonSession session;
        const QString entered = session.folders.elsewhere(QStringLiteral("a.png"));
        QVERIFY(writePicture(entered, QSize(3, 2)));
        QVERIFY(writePicture(session.folders.elsewhere(QStringLiteral("b.png")), QSize(3, 2)));
        QVERIFY(session.start());

        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(entered).toString()});

        QTRY_COMPARE_WITH_TIMEOUT(
            session.pictureSize(entered), QSize(3, 2), DaemonProcess::deadlineMs);
        QVERIFY(writePicture(entered, QSize(5, 4)));
        QTRY_COMPARE_WITH_TIMEOUT(
            session.pictureSize(entered), QSize(5, 4), DaemonProcess::deadlineMs);
        QCOMPARE(session.libraryFiles(), QStringList{entered});
        const LibraryDatabase::Rows expected{{1, 3, QStringLiteral("image/png")}};
        QCOMPARE(
            session.library().rows(QStringLiteral("SELECT scope, permissions, mimeType FROM file "
                                                  "JOIN directory ON directory.id = directoryId")),
            expected);
    }

    void entersAFileInAWatchedFolderWithoutAWord()
    {
        DaemonSession session;
        const QString hidden = session.folders.picture(QStringLiteral(".hidden.png"));
        QVERIFY(writePicture(hidden, QSize(3, 2)));
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        BusClient::call(QStringLiteral("indexFile"), {QUrl::fromLocalFile(hidden).toString()});

        QVERIFY(session.fileId(hidden) > 0);
        QCOMPARE(announcementsOfBurst(session, [] {}), QList<int>{4});
        QVERIFY(!session.pictureSize(hidden).isValid());
        QVERIFY(session.waitUntilFollowed());
        QCOMPARE(session.pictureSize(hidden), QSize(3, 2));
    }

    void announcesEachTypeOfABurstOnceInOrder()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        const QList<int> announced = announcementsOfBurst(session, [] {
            for (int type : {2, 0, 2, 4, 0, 0}) {
                BusClient::send(QStringLiteral("saveAttributes"), {type, 1LL, QVariantMap()});
            }
        });

        const QList<int> expected{0, 2, 4};
        QCOMPARE(announced, expected);
    }

    void announcesATypeThoughItCouldNotBeSaved()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        BusClient::call(
            QStringLiteral("saveAttributes"),
            {0, 99LL, QVariantMap{{QStringLiteral("displayName"), QStringLiteral("text")}}});

        QTRY_COMPARE_WITH_TIMEOUT(
            session.client.announcements(), QList<int>{0}, DaemonProcess::deadlineMs);
    }

    void announcesNoTypeAboveTheLastAndNoneWithoutAManager()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        const QList<int> announced = announcementsOfBurst(session, [] {
            for (int type : {3, 5, 6, 8, 99, 32, -1}) {
                BusClient::send(QStringLiteral("remove"), {type, 1LL});
                BusClient::send(QStringLiteral("saveAttributes"), {type, 1LL, QVariantMap()});
            }
        });

        QCOMPARE(announced, QList<int>{4});
    }

    void announcesAPictureThatArrives()
    {
        DaemonSession session;
        QVERIFY(session.start());
        QVERIFY(session.forgetAnnouncements());

        QVERIFY(session.waitUntilFollowed());

        QTRY_VERIFY_WITH_TIMEOUT(
            session.client.announcements().contains(2), DaemonProcess::deadlineMs);
        BusClient::isAnswered();
        const QList<int> expected{0, 2};
        QCOMPARE(session.client.announcements(), expected);
    }
};

QTEST_GUILESS_MAIN(BusInterfaceTest)

#include "tst_businterface.moc"
