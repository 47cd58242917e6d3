// SPDX-License-Identifier: BSD-3-Clause
#include "picturefile.h"

#include <QImageReader>
#include <QTemporaryDir>
#include <QTest>

class PictureFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesSizeAndFormat_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("jpeg") << QByteArray("jpeg");
        QTest::newRow("png") << QByteArray("png");
        QTest::newRow("bmp") << QByteArray("bmp");
    }

    void writesSizeAndFormat()
    {
        QFETCH(QByteArray, format);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("picture"));

        QVERIFY(writePicture(path, QSize(31, 7), format.constData()));

        QImageReader reader(path);
        QCOMPARE(reader.format(), format);
        QCOMPARE(reader.size(), QSize(31, 7));
    }

    void reportsFailure()
    {
        const QTemporaryDir folder;

        QVERIFY(!writePicture(folder.filePath(QStringLiteral("none/picture")), QSize(1, 1)));
        QVERIFY(!writePicture(folder.filePath(QStringLiteral("picture")), QSize(1, 1), "none"));
    }
};

QTEST_GUILESS_MAIN(PictureFileTest)

#include "tst_picturefile.moc"
