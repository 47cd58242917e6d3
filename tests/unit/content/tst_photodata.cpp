// SPDX-License-Identifier: BSD-3-Clause
#include "content/photodata.h"

#include <QTest>

#include <memory>

namespace {

std::unique_ptr<PhotoData> samplePhoto()
{
    auto photo = std::make_unique<PhotoData>(8, QUrl::fromLocalFile(QStringLiteral("/a/b.jpg")));
    photo->mimeType = QStringLiteral("image/jpeg");
    photo->fileName = QStringLiteral("b.jpg");
    photo->displayName = QStringLiteral("Sunset");
    photo->permissions = 1;
    photo->dateTaken = QDateTime(QDate(2020, 2, 29), QTime(12, 30));
    photo->width = 640;
    photo->height = 480;
    photo->orientation = 6;
    return photo;
}

} // namespace

class PhotoDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst()
    {
        const PhotoData photo(8, QUrl());

        QCOMPARE(photo.type, int(MoodsetContent::Image));
        QVERIFY(photo.dateTaken.isNull());
        QCOMPARE(photo.width, 0);
        QCOMPARE(photo.height, 0);
        QCOMPARE(photo.orientation, 0);
    }

    void roleGivesItsField_data()
    {
        QTest::addColumn<int>("role");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("contentId") << 0 << QVariant(qlonglong(8));
        QTest::newRow("url") << 1 << QVariant(QUrl(QStringLiteral("file:///a/b.jpg")));
        QTest::newRow("mimeType") << 2 << QVariant(QStringLiteral("image/jpeg"));
        QTest::newRow("fileName") << 3 << QVariant(QStringLiteral("b.jpg"));
        QTest::newRow("filePath") << 4 << QVariant(QStringLiteral("/a/b.jpg"));
        QTest::newRow("displayName") << 5 << QVariant(QStringLiteral("Sunset"));
        QTest::newRow("readOnly") << 6 << QVariant(true);
        QTest::newRow("dateTaken") << 7 << QVariant(QDateTime(QDate(2020, 2, 29), QTime(12, 30)));
        QTest::newRow("width") << 8 << QVariant(640);
        QTest::newRow("height") << 9 << QVariant(480);
        QTest::newRow("orientation") << 10 << QVariant(6);
        QTest::newRow("one below the first") << -1 << QVariant();
        QTest::newRow("one above the last") << 11 << QVariant();
    }

    void roleGivesItsField()
    {
        QFETCH(int, role);
        QFETCH(QVariant, value);
        const std::unique_ptr<PhotoData> photo = samplePhoto();

        const QVariant read = photo->data(role);

        QCOMPARE(read.userType(), value.userType());
        QCOMPARE(read, value);
    }

    void rolesHaveNames()
    {
        const QHash<int, QByteArray> expected{
            {0, "contentId"}, {1, "url"},         {2, "mimeType"},    {3, "fileName"},
            {4, "filePath"},  {5, "displayName"}, {6, "readOnly"},    {7, "dateTaken"},
            {8, "width"},     {9, "height"},      {10, "orientation"}};

        QCOMPARE(PhotoData::roleNames(), expected);
    }

    void refusesToWriteAnyRole()
    {
        const std::unique_ptr<PhotoData> photo = samplePhoto();

        for (int role = -1; role <= 24; ++role) {
            QVERIFY2(!photo->setData(role, 1), qPrintable(QString::number(role)));
        }
        QCOMPARE(photo->width, 640);
    }

    void cloneHasTheSameValuesAndNoReferences()
    {
        const std::unique_ptr<PhotoData> photo = samplePhoto();
        photo->ref.ref();
        const FileData& base = *photo;

        const std::unique_ptr<FileData> copy(base.clone());

        const FileData& content = *copy;
        QVERIFY(typeid(content) == typeid(PhotoData));
        QCOMPARE(copy->ref.loadRelaxed(), 0);
        QCOMPARE(copy->type, photo->type);
        for (int role = 0; role <= 10; ++role) {
            QCOMPARE(copy->data(role), photo->data(role));
        }
    }
};

QTEST_GUILESS_MAIN(PhotoDataTest)

#include "tst_photodata.moc"
