// SPDX-License-Identifier: BSD-3-Clause
#include "filecontent.h"
#include "testfolder.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

/// Tests how files are recognised by their first bytes, and how they are written.
class FileContentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsPicturesByTheirFirstBytes()
    {
        TestFolder folder;
        folder.write(QStringLiteral("a.png"), "\xff\xd8\xff\xe0");
        folder.write(QStringLiteral("b.jpg"), "\x89PNG\r\n\x1a\n");
        folder.write(QStringLiteral("c.png"), "RIFF....WEBP");
        folder.makeFifo(QStringLiteral("d.png"));
        QCOMPARE(pictureSuffix(folder.path(QStringLiteral("a.png"))), QStringLiteral("jpg"));
        QCOMPARE(pictureSuffix(folder.path(QStringLiteral("b.jpg"))), QStringLiteral("png"));
        QCOMPARE(pictureSuffix(folder.path(QStringLiteral("c.png"))), QString());
        QCOMPARE(pictureSuffix(folder.path(QStringLiteral("d.png"))), QString());
        QCOMPARE(pictureSuffix(folder.path(QStringLiteral("none"))), QString());
    }

    void knowsTonesByTheirFirstBytes()
    {
        TestFolder folder;
        folder.write(QStringLiteral("a"), "RIFF....WAVEfmt ");
        folder.write(QStringLiteral("b"), "OggS" + QByteArray(24, '\1') + "\x01vorbis");
        folder.write(QStringLiteral("c"), "OggS" + QByteArray(24, '\1') + "OpusHead");
        folder.write(QStringLiteral("d"), "ID3");
        QVERIFY(isPlayableTone(folder.path(QStringLiteral("a"))));
        QVERIFY(isPlayableTone(folder.path(QStringLiteral("b"))));
        QVERIFY(!isPlayableTone(folder.path(QStringLiteral("c"))));
        QVERIFY(!isPlayableTone(folder.path(QStringLiteral("d"))));
        QVERIFY(!isPlayableTone(QString()));
    }

    void writesThroughALink()
    {
        TestFolder folder;
        folder.write(QStringLiteral("file"), "old");
        folder.makeLink(QStringLiteral("link"), QStringLiteral("file"));

        QCOMPARE(writeWhole(folder.path(QStringLiteral("link")), "new"), QString());

        QVERIFY(QFileInfo(folder.path(QStringLiteral("link"))).isSymLink());
        QCOMPARE(
            readWhole(folder.path(QStringLiteral("file")), 3), std::optional<QByteArray>("new"));
    }

    void readsNothingThatIsTooLarge()
    {
        TestFolder folder;
        folder.write(QStringLiteral("file"), "1234");
        QVERIFY(!readWhole(folder.path(QStringLiteral("file")), 3));
        QVERIFY(readWhole(folder.path(QStringLiteral("file")), 4));
    }

    void tellsWhyItCannotWrite()
    {
        TestFolder folder;
        folder.makeDirectory(QStringLiteral("closed"));
        folder.setMode(QStringLiteral("closed"), 0500);
        const QString path = folder.path(QStringLiteral("closed/file"));
        QCOMPARE(
            writeWhole(path, "new"),
            path + QStringLiteral(" cannot be written: Permission denied"));
        folder.setMode(QStringLiteral("closed"), 0700);
    }
};

QTEST_GUILESS_MAIN(FileContentTest)

#include "tst_filecontent.moc"
