// SPDX-License-Identifier: BSD-3-Clause
#include "content/packagedfile.h"

#include "messagelog.h"
#include "testfolder.h"
#include "toolargewarning.h"

#include <QFile>
#include <QJsonObject>
#include <QTest>

namespace {

const QString Name = QStringLiteral("a.moodset");

} // namespace

class PackagedFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("content") << QByteArray("{\0}", 3);
        QTest::newRow("empty") << QByteArray();
    }

    void fileIsRead()
    {
        QFETCH(QByteArray, content);
        MessageLog log;
        TestFolder folder;
        folder.write(Name, content);

        const PackagedFile file = PackagedFile::read(folder.path(Name));

        QCOMPARE(file.state, PackagedFile::Read);
        QCOMPARE(file.content, content);
    }

    void largestFileIsRead()
    {
        MessageLog log;
        TestFolder folder;
        folder.write(Name, "{}");
        QVERIFY(QFile::resize(folder.path(Name), PackagedFile::MaximumSize));

        const PackagedFile file = PackagedFile::read(folder.path(Name));

        QCOMPARE(file.state, PackagedFile::Read);
        QCOMPARE(qint64(file.content.size()), PackagedFile::MaximumSize);
        QVERIFY(file.content.startsWith("{}"));
    }

    void largerFileIsWarnedOfAndNotRead_data()
    {
        QTest::addColumn<qint64>("size");
        QTest::newRow("one byte larger") << PackagedFile::MaximumSize + 1;
        QTest::newRow("more than 32 bits") << qint64(0x100000001);
    }

    void largerFileIsWarnedOfAndNotRead()
    {
        QFETCH(qint64, size);
        MessageLog log;
        TestFolder folder;
        folder.write(Name, "{}");
        QVERIFY(QFile::resize(folder.path(Name), size));

        const PackagedFile file = PackagedFile::read(folder.path(Name));

        QCOMPARE(file.state, PackagedFile::TooLarge);
        QCOMPARE(file.content, QByteArray());
        QCOMPARE(log.takeWarnings(), QStringList(tooLargeWarning(folder.path(Name))));
    }

    void whatIsNoRegularFileIsNotReadable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << QStringLiteral("missing");
        QTest::newRow("FIFO") << QStringLiteral("fifo");
        QTest::newRow("link to a FIFO") << QStringLiteral("link to fifo");
        QTest::newRow("link to a device") << QStringLiteral("link to device");
    }

    void whatIsNoRegularFileIsNotReadable()
    {
        QFETCH(QString, name);
        MessageLog log;
        TestFolder folder;
        folder.makeFifo(QStringLiteral("fifo"));
        folder.makeLink(QStringLiteral("link to fifo"), QStringLiteral("fifo"));
        folder.makeLink(QStringLiteral("link to device"), QStringLiteral("/dev/zero"));

        const PackagedFile file = PackagedFile::read(folder.path(name));

        QCOMPARE(file.state, PackagedFile::NotReadable);
        QCOMPARE(file.content, QByteArray());
    }

    void textKeepsItsByteOrderMark_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("as it is") << QByteArray("{\"a\": \"\xef\xbb\xbf"
                                                "b\"}");
        QTest::newRow("escaped") << QByteArray(R"({"a": "\ufeffb"})");
        QTest::newRow("after the first one") << QByteArray("\xef\xbb\xbf{\"a\": \"\xef\xbb\xbf"
                                                           "b\"}");
    }

    void textKeepsItsByteOrderMark()
    {
        QFETCH(QByteArray, content);
        const PackagedFile file{PackagedFile::Read, content};
        QJsonParseError error;

        const QJsonDocument document = file.json(&error);

        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(
            document.object().value(QStringLiteral("a")).toString(),
            QString(QChar(0xfeff)) + QLatin1Char('b'));
    }

    void errorIsToldWhereItIs_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("plain") << QByteArray("{\"a\": \"b\"");
        QTest::newRow("byte order mark before it") << QByteArray("{\"a\": \"\xef\xbb\xbf\"");
        QTest::newRow("not read") << QByteArray();
    }

    void errorIsToldWhereItIs()
    {
        QFETCH(QByteArray, content);
        const PackagedFile file{PackagedFile::Read, content};
        QJsonParseError expected;
        QVERIFY(QJsonDocument::fromJson(content, &expected).isNull());
        QJsonParseError error;

        QVERIFY(file.json(&error).isNull());

        QCOMPARE(error.error, expected.error);
        QCOMPARE(error.offset, expected.offset);
    }

    void linkToAFileIsFollowed()
    {
        MessageLog log;
        TestFolder folder;
        folder.write(Name, "{}");
        folder.makeLink(QStringLiteral("link"), Name);

        QCOMPARE(PackagedFile::read(folder.path(QStringLiteral("link"))).content, QByteArray("{}"));
    }
};

QTEST_GUILESS_MAIN(PackagedFileTest)
#include "tst_packagedfile.moc"
