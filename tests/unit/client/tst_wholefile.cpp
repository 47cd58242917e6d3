// SPDX-License-Identifier: BSD-3-Clause
#include "testfolder.h"
#include "wholefile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class WholeFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesThePlaceOfTheFormerFile()
    {
        TestFolder folder;
        folder.write(QStringLiteral("a"), "former");

        QCOMPARE(writeWholeFile(folder.path(QStringLiteral("a")), "new"), QString());

        QCOMPARE(contentOf(folder.path(QStringLiteral("a"))), QByteArray("new"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }

    void onlyItsOwnerCanReadIt()
    {
        const TestFolder folder;
        const QString path = folder.path(QStringLiteral("a"));

        QCOMPARE(writeWholeFile(path, "new"), QString());

        QCOMPARE(
            QFileInfo(path).permissions()
                & (QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther
                   | QFileDevice::WriteOther),
            QFileDevice::Permissions());
        QVERIFY(QFileInfo(path).permissions() & QFileDevice::ReadOwner);
    }

    void whatIsNoFileIsNotReplaced()
    {
        TestFolder folder;
        folder.makeFifo(QStringLiteral("a"));

        QCOMPARE(
            writeWholeFile(folder.path(QStringLiteral("a")), "new"), QStringLiteral("not a file"));

        QVERIFY(!QFileInfo(folder.path(QStringLiteral("a"))).isFile());
    }

    void formerFileStaysOnAFullDisk()
    {
        const QDir disk(qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK"));
        const QString path = disk.filePath(QStringLiteral("a"));
        QCOMPARE(writeWholeFile(path, "former"), QString());
        QFile rest(disk.filePath(QStringLiteral("rest")));
        QVERIFY(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (rest.write(QByteArray(4096, 'x')) > 0) { }

        QVERIFY(!writeWholeFile(path, "new").isEmpty());

        QCOMPARE(contentOf(path), QByteArray("former"));
        QVERIFY(rest.remove());
    }
};

QTEST_GUILESS_MAIN(WholeFileTest)

#include "tst_wholefile.moc"
