// SPDX-License-Identifier: BSD-3-Clause
#include "indexing/filename.h"

#include "leftoutnames.h"
#include "messagelog.h"

#include <QTest>

class FileNameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textOfANameIsThatOfItsBytes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("ASCII") << QByteArray("IMG_0001.jpg");
        QTest::newRow("accent") << QByteArray("\xc3\xa9.jpg");
        QTest::newRow("decomposed accent") << QByteArray("e\xcc\x81.jpg");
        QTest::newRow("emoji") << QByteArray("\xf0\x9f\x98\x80.jpg");
        QTest::newRow("replacement character") << QByteArray("\xef\xbf\xbd.jpg");
        QTest::newRow("byte order mark at the start") << QByteArray("\xef\xbb\xbf.jpg");
        QTest::newRow("no character") << QByteArray("\xef\xbf\xbe.jpg");
        QTest::newRow("empty") << QByteArray("");
    }

    void textOfANameIsThatOfItsBytes()
    {
        QFETCH(QByteArray, bytes);

        const std::optional<QString> name = decodeFileName(bytes);

        QVERIFY(name);
        QCOMPARE(name->toUtf8(), bytes);
    }

    void bytesThatAreNotUtf8AreNoText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("Latin-1") << QByteArray("\xe9t\xe9.png");
        QTest::newRow("no start of a character") << QByteArray("\x80.png");
        QTest::newRow("a character cut off") << QByteArray("a.png\xe2\x82");
        QTest::newRow("overlong") << QByteArray("\xc0\xaf.png");
        QTest::newRow("a surrogate") << QByteArray("\xed\xa0\x80.png");
        QTest::newRow("bytes never used") << QByteArray("\xff\xfe.png");
        QTest::newRow("too large") << QByteArray("\xf4\x90\x80\x80.png");
    }

    void bytesThatAreNotUtf8AreNoText()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!decodeFileName(bytes));
    }

    void reportsAreOneWarning()
    {
        MessageLog log;

        warnOfUnstorableName("void function()", QStringLiteral("/\ufeffa.jpg"));
        warnOfUndecodableName("void function()", "/\xff.jpg");

        QCOMPARE(
            log.takeMessages(),
            QStringList(
                {QStringLiteral("void function() Left out a name that the database would change: "
                                "\"/\\uFEFFa.jpg\""),
                 QStringLiteral("void function() Left out a name that is not UTF-8: "
                                "\"/\\xFF.jpg\"")}));
    }
};

QTEST_GUILESS_MAIN(FileNameTest)

#include "tst_filename.moc"
