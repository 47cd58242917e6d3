// SPDX-License-Identifier: BSD-3-Clause
#include "phototable.h"

#include <QTest>

class PhotoTableTest : public QObject
{
    Q_OBJECT

private:
    static LibraryFile photo(const char* path)
    {
        LibraryFile result;
        result.path = QString::fromUtf8(path);
        result.mimeType = QStringLiteral("image/jpeg");
        result.current = true;
        return result;
    }

private Q_SLOTS:
    void columnsAreAsWideAsTheirContent()
    {
        LibraryFile full = photo("/pictures/a/long name.jpg");
        full.size = QSize(4000, 3000);
        full.taken = QDateTime(QDate(2019, 7, 4), QTime(12, 30, 15, 250));
        full.orientation = 6;
        LibraryFile wide = photo("/pictures/\u65e5\u672c.jpg");
        wide.size = QSize(1, 2);
        LibraryFile waiting = photo("/elsewhere/b.jpg");
        waiting.current = false;

        const QString table = photoTable(
            {full, wide, waiting, photo("/pictures/c.jpg")}, QStringLiteral("/pictures"));

        QCOMPARE(
            table,
            QString::fromUtf8(
                "File              Size        Taken                Orientation  Type\n"
                "a/long name.jpg   4000x3000   2019-07-04 12:30:15  6            image/jpeg\n"
                "\u65e5\u672c.jpg          1x2         -                    -            "
                "image/jpeg\n"
                "/elsewhere/b.jpg  waiting     -                    -            image/jpeg\n"
                "c.jpg             unreadable  -                    -            image/jpeg\n"));
    }

    void noPhotosMakeNoTable() { QCOMPARE(photoTable({}, QStringLiteral("/pictures")), QString()); }

    void aPictureWithTagsButNoSizeIsReadable()
    {
        LibraryFile undecoded = photo("/a.heic");
        undecoded.orientation = 1;

        QCOMPARE(displaySize(undecoded), QStringLiteral("unknown"));
        QCOMPARE(
            summaryLine({1, 1, 1, 0, 0, 0, 0}, {undecoded}),
            QStringLiteral("1 file, 1 picture, 1 folder"));
    }

    void theSummaryCountsTheUnreadable()
    {
        LibraryFile waiting = photo("/b.jpg");
        waiting.current = false;

        QCOMPARE(
            summaryLine({4, 3, 2, 1, 0, 0, 0}, {photo("/a.jpg"), waiting}),
            QStringLiteral("4 files, 2 pictures, 3 folders, 1 unreadable"));
    }
};

QTEST_GUILESS_MAIN(PhotoTableTest)

#include "tst_phototable.moc"
