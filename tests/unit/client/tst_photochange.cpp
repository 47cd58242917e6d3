// SPDX-License-Identifier: BSD-3-Clause
#include "photochange.h"

#include <QTest>

class PhotoChangeTest : public QObject
{
    Q_OBJECT

private:
    static LibraryFile photo(const QString& path, int width = 1)
    {
        LibraryFile result;
        result.path = path;
        result.current = true;
        result.size = QSize(width, 1);
        return result;
    }

    static QStringList described(const QVector<PhotoChange>& changes)
    {
        QStringList result;
        for (const PhotoChange& change : changes) {
            result.append(QStringLiteral("%1 %2 %3")
                              .arg(int(change.kind))
                              .arg(change.photo.path)
                              .arg(change.photo.size.width()));
        }
        return result;
    }

    const QString m_a = QStringLiteral("/a");
    const QString m_b = QStringLiteral("/b");

private Q_SLOTS:
    void equalListsHaveNoChanges()
    {
        QCOMPARE(described(photoChanges({photo(m_a)}, {photo(m_a)})), QStringList());
        QCOMPARE(described(photoChanges({}, {})), QStringList());
    }

    void tellsAdditions()
    {
        QCOMPARE(
            described(photoChanges({photo(m_a)}, {photo(m_a), photo(m_b, 2)})),
            QStringList(QStringLiteral("0 /b 2")));
    }

    void tellsChangesWithTheNewValues()
    {
        QCOMPARE(
            described(photoChanges({photo(m_a, 1)}, {photo(m_a, 2)})),
            QStringList(QStringLiteral("1 /a 2")));
    }

    void tellsRemovalsWithTheOldValues()
    {
        QCOMPARE(
            described(photoChanges({photo(m_a, 3), photo(m_b)}, {photo(m_b)})),
            QStringList(QStringLiteral("2 /a 3")));
    }

    void tellsRemovalsFirst()
    {
        const QStringList expected{QStringLiteral("2 /b 1"), QStringLiteral("0 /a 1")};
        QCOMPARE(described(photoChanges({photo(m_b)}, {photo(m_a)})), expected);
    }

    void anyFieldIsAChange()
    {
        const LibraryFile before = photo(m_a);
        QVector<LibraryFile> variants(6, before);
        variants[0].mimeType = QStringLiteral("image/png");
        variants[1].modified = QDateTime::fromSecsSinceEpoch(1);
        variants[2].current = false;
        variants[3].size = QSize();
        variants[4].taken = QDateTime::fromSecsSinceEpoch(1);
        variants[5].orientation = 6;

        for (const LibraryFile& variant : std::as_const(variants)) {
            QCOMPARE(photoChanges({before}, {variant}).count(), 1);
        }
    }
};

QTEST_GUILESS_MAIN(PhotoChangeTest)

#include "tst_photochange.moc"
