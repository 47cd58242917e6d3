// SPDX-License-Identifier: BSD-3-Clause
#include "colorharmony.h"
#include "incoming.h"
#include "photorows.h"
#include "wallpapercolors.h"

#include <QAbstractItemModelTester>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>

/// The app's own classes, each without the others.
class PickerPartsTest : public QObject
{
    Q_OBJECT

private:
    enum Role : int { Id = Qt::UserRole, Month, Url, Thumbnail, FileName };

    static QStandardItem* photo(int id, const QString& month)
    {
        auto* const item = new QStandardItem;
        item->setData(id, Id);
        item->setData(month, Month);
        item->setData(QStringLiteral("%1.jpg").arg(id), FileName);
        return item;
    }

    /// The contrast of white on two wallpapers of one grey each.
    static qreal contrastOfWhite(int home, int application)
    {
        const QTemporaryDir folder;
        const auto wallpaper = [&folder](const char* name, int grey) {
            const QString path = folder.filePath(QLatin1String(name));
            QImage picture(8, 8, QImage::Format_RGB32);
            picture.fill(QColor(grey, grey, grey));
            return picture.save(path) ? QUrl::fromLocalFile(path) : QUrl();
        };
        WallpaperColors colors;
        colors.setHomeWallpaper(wallpaper("home.png", home));
        colors.setApplicationWallpaper(wallpaper("application.png", application));
        const bool isReady = QTest::qWaitFor([&] { return colors.isReady(); });
        return isReady ? colors.contrast(QColor(Qt::white)) : 0;
    }

    static int hueDistance(const QColor& a, const QColor& b)
    {
        constexpr int circle = 360;
        const int direct = std::abs(a.hslHue() - b.hslHue());
        return std::min(direct, circle - direct);
    }

    static void setRoles(QStandardItemModel* model)
    {
        model->setItemRoleNames(
            {{Id, "contentId"},
             {Month, "month"},
             {Url, "url"},
             {Thumbnail, "thumbnail"},
             {FileName, "fileName"}});
    }

    /// Each row as its title or the names of its pictures.
    static QStringList shown(const PhotoRows& rows)
    {
        QStringList result;
        for (int row = 0; row < rows.rowCount(); ++row) {
            const QModelIndex index = rows.index(row);
            QStringList names;
            const QVariantList pictures = index.data(PhotoRows::PicturesRole).toList();
            for (const QVariant& picture : pictures) {
                names.append(picture.toMap().value(QStringLiteral("name")).toString());
            }
            const QString title = index.data(PhotoRows::TitleRole).toString();
            result.append(title.isEmpty() ? names.join(QLatin1Char(' ')) : title);
        }
        return result;
    }

private Q_SLOTS:
    void arrangesPicturesByMonth()
    {
        QStandardItemModel photos;
        setRoles(&photos);
        for (int id = 1; id <= 3; ++id) {
            photos.appendRow(photo(id, QStringLiteral("2024-03")));
        }
        photos.appendRow(photo(4, QString()));
        PhotoRows rows;
        const QAbstractItemModelTester tester(&rows);
        rows.setColumns(2);
        rows.setPhotos(&photos);

        QTRY_COMPARE(
            shown(rows),
            QStringList(
                {QStringLiteral("March 2024"), QStringLiteral("1.jpg 2.jpg"),
                 QStringLiteral("3.jpg"), QStringLiteral("Without a date"),
                 QStringLiteral("4.jpg")}));
    }

    void announcesRowsThatWereReadBetweenTwoArrangements()
    {
        QStandardItemModel photos;
        setRoles(&photos);
        for (int id = 1; id <= 3; ++id) {
            photos.appendRow(photo(id, QStringLiteral("2024-0%1").arg(id)));
        }
        PhotoRows rows;
        rows.setPhotos(&photos);
        QTRY_COMPARE(rows.rowCount(), 6);

        const QString last = QStringLiteral("3.jpg");
        QString shownLast;
        connect(&rows, &QAbstractItemModel::dataChanged, this, [&] {
            shownLast = shown(rows).constLast();
        });
        photos.removeRow(0);
        QVERIFY(shown(rows).constLast() != last);
        QTRY_COMPARE(shownLast, last);
        QCOMPARE(rows.rowCount(), 4);
    }

    void keepsTheRowsThatStayTheSame()
    {
        QStandardItemModel photos;
        setRoles(&photos);
        for (int id = 1; id <= 6; ++id) {
            photos.appendRow(photo(id, QStringLiteral("2024-0%1").arg(7 - id)));
        }
        PhotoRows rows;
        const QAbstractItemModelTester tester(&rows);
        rows.setPhotos(&photos);
        QTRY_COMPARE(rows.rowCount(), 12);
        const QSignalSpy removals(&rows, &QAbstractItemModel::rowsRemoved);
        const QSignalSpy insertions(&rows, &QAbstractItemModel::rowsInserted);

        photos.insertRow(3, photo(7, QStringLiteral("2024-04")));
        QTRY_COMPARE(insertions.count(), 1);
        photos.removeRow(0);
        QTRY_COMPARE(removals.count(), 1);

        QCOMPARE(insertions.constFirst().at(1).toInt(), 6);
        QCOMPARE(removals.constFirst().at(1).toInt(), 0);
        QCOMPARE(removals.constFirst().at(2).toInt(), 1);
    }

    void givesDifferentColorsThatGoWithAPicture()
    {
        QImage red(10, 10, QImage::Format_RGB32);
        red.fill(QColor(200, 30, 30));
        const std::vector<QColor> colors = harmoniousColors(red);
        QVERIFY(colors.size() >= 6);
        const int hue = colors.front().hslHue();
        QVERIFY2(hue < 20 || hue > 340, qPrintable(QString::number(hue)));

        QImage grey(10, 10, QImage::Format_RGB32);
        grey.fill(Qt::gray);
        QVERIFY(!harmoniousColors(grey).empty());
        QVERIFY(!harmoniousColors(QImage()).empty());
    }

    void givesNoTwoColorsThatLookAlike()
    {
        // Two reds, on both sides of the hue 0.
        QImage reds(10, 10, QImage::Format_RGB32);
        reds.fill(QColor::fromHsv(3, 200, 200));
        for (int x = 0; x < 5; ++x) {
            for (int y = 0; y < reds.height(); ++y) {
                reds.setPixelColor(x, y, QColor::fromHsv(356, 200, 200));
            }
        }
        const std::vector<QColor> colors = harmoniousColors(reds);
        constexpr int rounding = 1;
        constexpr int nearest = 20 - rounding;
        for (std::size_t i = 0; i < colors.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                QVERIFY2(
                    hueDistance(colors[i], colors[j]) >= nearest,
                    qPrintable(colors[i].name() + QLatin1Char(' ') + colors[j].name()));
            }
        }
    }

    void takesTheWorseOfTheTwoWallpapers()
    {
        constexpr int black = 0;
        constexpr int white = 255;
        // A white application wallpaper is dimmed to a grey of 102, as toolkits do.
        constexpr qreal onGrey = 5.74;
        constexpr qreal nearly = 0.1;
        const qreal worseApplication = contrastOfWhite(black, white);
        QVERIFY2(
            std::abs(worseApplication - onGrey) < nearly,
            qPrintable(QString::number(worseApplication)));
        const qreal worseHome = contrastOfWhite(white, black);
        QVERIFY2(std::abs(worseHome - 1) < nearly, qPrintable(QString::number(worseHome)));
    }

    void mendsAColorUntilItCanBeRead()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.png"));
        QImage dark(8, 8, QImage::Format_RGB32);
        dark.fill(QColor(40, 40, 60));
        QVERIFY(dark.save(path));
        WallpaperColors colors;
        colors.setHomeWallpaper(QUrl::fromLocalFile(path));
        QTRY_VERIFY(colors.isReady());

        QVERIFY(colors.isEnough(QColor(Qt::white)));
        const QColor faint(90, 90, 130, 120);
        QVERIFY(!colors.isEnough(faint));
        QVERIFY(colors.isEnough(colors.mended(faint)));
        QCOMPARE(colors.contrast(QVariant()), 0.0);
    }

    void tellsTextsApart()
    {
        const QTemporaryDir folder;
        const auto kind = [](const QString& text) {
            return Incoming::classify(text).value(QStringLiteral("kind")).toString();
        };
        QCOMPARE(kind(folder.path()), QStringLiteral("bundle"));
        QCOMPARE(kind(QStringLiteral(" https://example.org/a.jpg\n")), QStringLiteral("picture"));
        QCOMPARE(kind(QStringLiteral("ftp://example.org/a.jpg")), QStringLiteral("none"));
        QCOMPARE(kind(QStringLiteral("/dev/zero")), QStringLiteral("none"));
        QCOMPARE(
            Incoming::bundleFaults(QUrl::fromLocalFile(folder.path()), {}),
            QStringList({QStringLiteral("There is no moodset file in this folder.")}));
    }
};

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    PickerPartsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pickerparts.moc"
