// SPDX-License-Identifier: BSD-3-Clause
#include "imaging/wallpaperfile.h"

#include "encodedpicture.h"
#include "paintedpicture.h"
#include "testfolder.h"

#include <QBuffer>
#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QTest>

#include <atomic>
#include <thread>

namespace {

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray asJpeg(const QImage& image, int quality)
{
    QBuffer buffer;
    return image.save(&buffer, "jpeg", quality) ? buffer.data() : QByteArray();
}

bool isWholeJpeg(const QByteArray& content)
{
    return content.startsWith("\xff\xd8") && content.endsWith("\xff\xd9");
}

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

/// A colour space for grey pictures with a gamma of 2.2.
QColorSpace greySpace()
{
    constexpr int kind = 16;
    QByteArray profile =
        QColorSpace(QColorSpace::Primaries::SRgb, QColorSpace::TransferFunction::Gamma, 2.2F)
            .iccProfile();
    profile.replace(kind, 4, "GRAY");
    profile.replace(profile.indexOf("rTRC"), 4, "kTRC");
    return QColorSpace::fromIccProfile(profile);
}

/// Fills the disk of 1 MiB, except for a few pages, while it lives.
class FullDisk
{
public:
    FullDisk(const QString& folder, qint64 freePages)
        : m_file(folder + QStringLiteral("/filling"))
    {
        constexpr qint64 pageSize = 4096;
        const QByteArray page(pageSize, 'x');
        if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            return;
        }
        while (m_file.write(page) == pageSize) { }
        m_isFull = m_file.resize(m_file.size() - freePages * pageSize);
    }
    ~FullDisk() { m_file.remove(); }
    Q_DISABLE_COPY_MOVE(FullDisk)

    bool isFull() const { return m_isFull; }

private:
    QFile m_file;
    bool m_isFull = false;
};

} // namespace

class WallpaperFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSuffixDecidesTheFormat_data();
    void theSuffixDecidesTheFormat();
    void theQualityIs93();
    void aSuffixOfNoFormatIsRefused();
    void aNullImageIsRefusedAndTheOldFileStays();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void aFifoIsReplaced();
    void aReaderOfTheOldFileKeepsItWhole();
    void readersNeverSeeAPart();
    void theOldFileStaysWhenTheDiskIsFull_data();
    void theOldFileStaysWhenTheDiskIsFull();
    void theColourSpaceIsWritten_data();
    void theColourSpaceIsWritten();
    void imagesWithoutAColourSpaceGetNone();
    void aColourSpaceForGreyBecomesOneForColours_data();
    void aColourSpaceForGreyBecomesOneForColours();
    void textsOfTheSourceAreNotWritten_data();
    void textsOfTheSourceAreNotWritten();
    void coloursOfATableAreWritten();
};

void WallpaperFileTest::theSuffixDecidesTheFormat_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("format");

    QTest::newRow("jpg") << QStringLiteral("a.jpg") << QByteArrayLiteral("jpeg");
    QTest::newRow("JPEG") << QStringLiteral("a.b.JPEG") << QByteArrayLiteral("jpeg");
    QTest::newRow("png") << QStringLiteral("a.png") << QByteArrayLiteral("png");
}

void WallpaperFileTest::theSuffixDecidesTheFormat()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, format);
    const TestFolder folder;

    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), folder.path(name)), QString());

    QCOMPARE(QImageReader::imageFormat(folder.path(name)), format);
    QCOMPARE(entriesOf(folder.path()), QStringList(name));
}

void WallpaperFileTest::theQualityIs93()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));
    const QImage image = noisePicture({60, 50});

    QCOMPARE(writeWallpaper(image, path), QString());

    QCOMPARE(contentOf(path), asJpeg(image, 93));
    QVERIFY(contentOf(path) != asJpeg(image, 92));
}

void WallpaperFileTest::aSuffixOfNoFormatIsRefused()
{
    const TestFolder folder;
    const QImage image = quadrantPicture({20, 20});

    QCOMPARE(
        writeWallpaper(image, folder.path(QStringLiteral("a.moodset"))),
        QStringLiteral("Unsupported image format"));
    QCOMPARE(
        writeWallpaper(image, folder.path(QStringLiteral("jpg"))),
        QStringLiteral("Unsupported image format"));

    QCOMPARE(entriesOf(folder.path()), QStringList());
}

void WallpaperFileTest::aNullImageIsRefusedAndTheOldFileStays()
{
    TestFolder folder;
    folder.write(QStringLiteral("a.jpg"), "old");

    QCOMPARE(
        writeWallpaper(QImage(), folder.path(QStringLiteral("a.jpg"))),
        QStringLiteral("Image is empty"));

    QCOMPARE(contentOf(folder.path(QStringLiteral("a.jpg"))), QByteArray("old"));
}

void WallpaperFileTest::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("error");

    QTest::newRow("a folder")
        << QStringLiteral("folder.jpg")
        << QStringLiteral("Cannot open device for writing: Filename refers to a directory");
    QTest::newRow("in no folder") << QStringLiteral(
        "file/a.jpg") << QStringLiteral("Cannot open device for writing: Not a directory");
    QTest::newRow("in a missing folder")
        << QStringLiteral("missing/a.jpg")
        << QStringLiteral("Cannot open device for writing: No such file or directory");
}

void WallpaperFileTest::whatIsNoFileIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, error);
    TestFolder folder;
    folder.makeDirectory(QStringLiteral("folder.jpg"));
    folder.write(QStringLiteral("file"));

    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), folder.path(name)), error);

    QCOMPARE(entriesOf(folder.path()).size(), 2);
}

void WallpaperFileTest::aFifoIsReplaced()
{
    TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));
    folder.makeFifo(QStringLiteral("a.jpg"));

    // Waiting for its reader would last until the test's time limit.
    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), path), QString());

    QVERIFY(QFileInfo(path).isFile());
    QVERIFY(isWholeJpeg(contentOf(path)));
}

void WallpaperFileTest::aReaderOfTheOldFileKeepsItWhole()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));
    QCOMPARE(writeWallpaper(noisePicture({300, 300}), path), QString());
    const QByteArray old = contentOf(path);
    QFile reader(path);
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const QByteArray start = reader.read(old.size() / 2);

    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), path), QString());

    QCOMPARE(start + reader.readAll(), old);
    QVERIFY(contentOf(path) != old);
}

void WallpaperFileTest::readersNeverSeeAPart()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));
    const QImage image = noisePicture({200, 200});
    QCOMPARE(writeWallpaper(image, path), QString());
    std::atomic<bool> isOver(false);
    std::atomic<int> wholeFiles(0);
    std::atomic<int> parts(0);
    std::thread reader([&] {
        while (!isOver) {
            ++(isWholeJpeg(contentOf(path)) ? wholeFiles : parts);
        }
    });

    for (int i = 0; i < 20 || wholeFiles == 0; ++i) {
        static_cast<void>(writeWallpaper(image, path)); // Another test tells that it succeeds.
    }
    isOver = true;
    reader.join();

    QCOMPARE(parts.load(), 0);
}

void WallpaperFileTest::theOldFileStaysWhenTheDiskIsFull_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qint64>("freePages");
    QTest::newRow("large") << QSize(500, 500) << qint64(16);
    QTest::newRow("small enough for a buffer") << QSize(60, 60) << qint64(0);
}

void WallpaperFileTest::theOldFileStaysWhenTheDiskIsFull()
{
    QFETCH(const QSize, size);
    QFETCH(const qint64, freePages);
    const QString folder = qEnvironmentVariable("PRIVATE_MACHINE_SMALL_DISK");
    const QString path = folder + QStringLiteral("/a.jpg");
    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), path), QString());
    const QByteArray old = contentOf(path);
    {
        const FullDisk disk(folder, freePages);
        QVERIFY(disk.isFull());

        QCOMPARE(
            writeWallpaper(noisePicture(size), path), QStringLiteral("No space left on device"));

        QCOMPARE(contentOf(path), old);
        QCOMPARE(
            entriesOf(folder), QStringList({QStringLiteral("a.jpg"), QStringLiteral("filling")}));
    }
    QCOMPARE(writeWallpaper(noisePicture(size), path), QString());
    QVERIFY(contentOf(path).size() > old.size());
}

void WallpaperFileTest::theColourSpaceIsWritten_data()
{
    QTest::addColumn<QColorSpace>("colorSpace");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QImage::Format>("format");

    for (const auto named :
         {QColorSpace::SRgb, QColorSpace::AdobeRgb, QColorSpace::DisplayP3,
          QColorSpace::ProPhotoRgb}) {
        for (const QString& name : {QStringLiteral("a.jpg"), QStringLiteral("a.png")}) {
            QTest::addRow("%d, %s", int(named), qPrintable(name))
                << QColorSpace(named) << name << QImage::Format_RGB32;
        }
    }
    QTest::newRow("grey pixels") << QColorSpace(QColorSpace::AdobeRgb) << QStringLiteral("a.jpg")
                                 << QImage::Format_Grayscale8;
}

void WallpaperFileTest::theColourSpaceIsWritten()
{
    QFETCH(QColorSpace, colorSpace);
    QFETCH(QString, name);
    QFETCH(QImage::Format, format);
    const TestFolder folder;
    QImage image = quadrantPicture({20, 20}).convertToFormat(format);
    image.setColorSpace(colorSpace);

    QCOMPARE(writeWallpaper(image, folder.path(name)), QString());

    QCOMPARE(QImage(folder.path(name)).colorSpace(), colorSpace);
    QCOMPARE(image.colorSpace(), colorSpace);
}

void WallpaperFileTest::imagesWithoutAColourSpaceGetNone()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));

    QCOMPARE(writeWallpaper(quadrantPicture({20, 20}), path), QString());

    QVERIFY(!QImage(path).colorSpace().isValid());
}

void WallpaperFileTest::aColourSpaceForGreyBecomesOneForColours_data()
{
    QTest::addColumn<QImage::Format>("format");

    QTest::newRow("coloured pixels") << QImage::Format_RGB32;
    QTest::newRow("grey pixels") << QImage::Format_Grayscale8;
}

void WallpaperFileTest::aColourSpaceForGreyBecomesOneForColours()
{
    QFETCH(QImage::Format, format);
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.jpg"));
    QImage image = noisePicture({20, 20}).convertToFormat(format);
    image.setColorSpace(greySpace());
    QVERIFY(image.colorSpace().isValid());

    QCOMPARE(writeWallpaper(image, path), QString());

    const QColorSpace written = QImage(path).colorSpace();
    QVERIFY(!contentOf(path).contains("GRAY"));
    QCOMPARE(written.primaries(), QColorSpace::Primaries::SRgb);
    QCOMPARE(written.transferFunction(), QColorSpace::TransferFunction::Gamma);
    QVERIFY(qAbs(written.gamma() - greySpace().gamma()) < 0.01F);
}

void WallpaperFileTest::textsOfTheSourceAreNotWritten_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("jpg") << QStringLiteral("a.jpg");
    QTest::newRow("png") << QStringLiteral("a.png");
}

void WallpaperFileTest::textsOfTheSourceAreNotWritten()
{
    QFETCH(QString, name);
    const TestFolder folder;
    QImage image = noisePicture({20, 20});
    for (const char* const key : {"Comment", "Description", "GPSLatitude", ""}) {
        image.setText(QLatin1String(key), QStringLiteral("at home"));
    }

    QCOMPARE(writeWallpaper(image, folder.path(name)), QString());

    QCOMPARE(QImage(folder.path(name)).textKeys(), QStringList());
    QVERIFY(!contentOf(folder.path(name)).contains("at home"));
    QCOMPARE(image.text(QStringLiteral("Comment")), QStringLiteral("at home"));
}

void WallpaperFileTest::coloursOfATableAreWritten()
{
    const TestFolder folder;
    const QString path = folder.path(QStringLiteral("a.png"));
    const QImage image = quadrantPicture({20, 20}).convertToFormat(QImage::Format_Indexed8);

    QCOMPARE(writeWallpaper(image, path), QString());

    QCOMPARE(quadrants(QImage(path)), QStringLiteral("RGWB"));
}

QTEST_GUILESS_MAIN(WallpaperFileTest)
#include "tst_wallpaperfile.moc"
