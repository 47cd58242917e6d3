// SPDX-License-Identifier: BSD-3-Clause
#include "boundedfile.h"

#include "testfolder.h"

#include <QFile>
#include <QTest>

namespace {

constexpr qint64 GiB = qint64(1024) * 1024 * 1024;
const QString Name = QStringLiteral("file");

/// 100,000 bytes in which no two places have the same content.
QByteArray content()
{
    QByteArray bytes;
    for (int i = 0; i < 25000; ++i) {
        bytes += QByteArray::number(i).rightJustified(4, '-').right(4);
    }
    return bytes;
}

} // namespace

class BoundedFileTest : public QObject
{
    Q_OBJECT

private:
    TestFolder m_folder;

    QString path() const { return m_folder.path(Name); }

private Q_SLOTS:
    void init() { m_folder.write(Name, content()); }

    void fileIsReadAsItIsWithinTheLimit()
    {
        BoundedFile file(path());
        file.allow(content().size());

        QVERIFY(file.isOpen());
        QVERIFY(!file.isSequential());
        QCOMPARE(file.size(), qint64(content().size()));
        QCOMPARE(file.readAll(), content());
        QVERIFY(file.atEnd());
    }

    void anyPlaceCanBeRead()
    {
        BoundedFile file(path());
        file.allow(GiB);

        for (const int offset : {99996, 0, 50000, 50004, 20000, 99990}) {
            QVERIFY(file.seek(offset));
            QCOMPARE(file.peek(4), content().mid(offset, 4));
            QCOMPARE(file.read(10), content().mid(offset, 10));
        }
    }

    void nothingIsReadBeforeItIsAllowed()
    {
        BoundedFile file(path());

        QVERIFY(file.isOpen());
        QCOMPARE(file.read(1), QByteArray());
        QVERIFY(file.atEnd());
    }

    void fileEndsWhereTheLimitIsReached()
    {
        BoundedFile file(path());
        file.allow(30000);

        QCOMPARE(file.readAll(), content().left(30000));

        QVERIFY(file.atEnd());
        QCOMPARE(file.size(), qint64(30000));
        QCOMPARE(file.read(1), QByteArray());
    }

    // A loop that reads up to the end must reach it from any start.
    void limitHoldsForAllPlacesTogether()
    {
        BoundedFile file(path());
        file.allow(50000);
        qint64 count = 0;

        for (int i = 0; i < 10; ++i) {
            QVERIFY(file.seek(60000));
            while (!file.atEnd()) {
                const QByteArray bytes = file.read(20000);
                QVERIFY(!bytes.isEmpty());
                count += bytes.size();
            }
        }

        QCOMPARE(count, qint64(50000));
    }

    void moreCanBeAllowedLater()
    {
        BoundedFile file(path());
        file.allow(20000);
        QCOMPARE(file.readAll().size(), 20000);

        file.allow(GiB);

        QVERIFY(file.seek(0));
        QCOMPARE(file.readAll(), content());
    }

    void largeFileIsReadAtItsEnd()
    {
        constexpr qint64 size = 5 * GiB;
        QVERIFY(QFile::resize(path(), size));
        BoundedFile file(path());
        file.allow(GiB);

        QCOMPARE(file.size(), size);
        QVERIFY(file.seek(size - 3));
        QCOMPARE(file.readAll(), QByteArray(3, '\0'));
    }

    void placeBehindTheEndHasNothing()
    {
        BoundedFile file(path());
        file.allow(GiB);

        QVERIFY(file.seek(200000));
        QCOMPARE(file.read(4), QByteArray());
        QVERIFY(file.seek(0));
        QCOMPARE(file.read(4), content().left(4));
    }

    void fileThatIsCutShortMeanwhileEndsThere()
    {
        BoundedFile file(path());
        file.allow(GiB);
        QVERIFY(QFile::resize(path(), 10));

        QCOMPARE(file.readAll(), content().left(10));
    }

    void nothingCanBeWritten()
    {
        BoundedFile file(path());
        file.allow(GiB);
        QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (BoundedFile): ReadOnly device");

        QCOMPARE(file.write("x"), qint64(-1));
    }

    void whatIsNoRegularFileIsNotOpened_data()
    {
        m_folder.makeFifo(QStringLiteral("fifo"));
        m_folder.makeLink(QStringLiteral("link to the fifo"), QStringLiteral("fifo"));
        m_folder.makeLink(QStringLiteral("link to a device"), QStringLiteral("/dev/zero"));
        m_folder.makeLink(QStringLiteral("link to itself"), QStringLiteral("link to itself"));
        QTest::addColumn<QString>("name");
        for (const char* const name :
             {"fifo", "link to the fifo", "link to a device", "link to itself", "missing", "."}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void whatIsNoRegularFileIsNotOpened()
    {
        QFETCH(QString, name);
        BoundedFile file(m_folder.path(name));
        file.allow(GiB);

        QVERIFY(!file.isOpen());
    }
};

QTEST_GUILESS_MAIN(BoundedFileTest)

#include "tst_boundedfile.moc"
