// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

#include "exifbuilder.h"
#include "messagelog.h"
#include "testfolder.h"

#include <QTest>

namespace {

const QByteArray ExifKeyword("Raw profile type exif");

QByteArray exif()
{
    return exifBlock("2020:01:02 03:04:05", 6);
}

QByteArray xmp()
{
    return xmpPacket(R"(xmp:CreateDate="2020-01-02T03:04:05" tiff:Orientation="6")");
}

/// The block in the form of a JPEG file's segment.
QByteArray exifSegment()
{
    return QByteArray("Exif\0\0", 6) + exif();
}

QByteArray xmpSegment()
{
    return QByteArray("http://ns.adobe.com/xap/1.0/\0", 29) + xmp();
}

QByteArray compressedProfile(const QByteArray& text)
{
    return pngText("zTXt", ExifKeyword, text);
}

/// The tags of a file.
struct Tags
{
    explicit Tags(const QByteArray& content)
    {
        TestFolder folder;
        folder.write(QStringLiteral("picture"), content);
        const QuillMetadata metadata(folder.path(QStringLiteral("picture")));
        timestamp = metadata.entry(QuillMetadata::TimestampTag);
        orientation = metadata.entry(QuillMetadata::OrientationTag);
    }

    QVariant timestamp;
    QVariant orientation;
};

const QDateTime& moment()
{
    static const QDateTime moment(QDate(2020, 1, 2), QTime(3, 4, 5));
    return moment;
}

} // namespace

/// Tests tags that programs wrote into PNG files as texts of digits.
class PngProfilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void profilesOfProgramsAreRead_data();
    void profilesOfProgramsAreRead();
    void aProfileAfterThePixelsIsRead();
    void exifAndXmpProfilesAreReadTogether();
    void theChunkForExifIsBelievedFirst();
    void aDamagedProfileIsPassedOver_data();
    void aDamagedProfileIsPassedOver();
    void otherTextsAreNoProfiles_data();
    void otherTextsAreNoProfiles();
    void compressedXmpIsPassedOver();
    void manyProfilesBeforeTheTagsHideThem();
    void tagsAtTheStartOfALongProfileAreRead();
};

void PngProfilesTest::profilesOfProgramsAreRead_data()
{
    QTest::addColumn<QByteArray>("chunk");

    const QByteArray digits = rawProfile("exif", exifSegment());
    QTest::newRow("compressed") << pngText("zTXt", ExifKeyword, digits);
    QTest::newRow("plain") << pngText("tEXt", ExifKeyword, digits);
    QTest::newRow("international") << pngText("iTXt", ExifKeyword, digits);
    QTest::newRow("international and compressed") << pngText("iTXt", ExifKeyword, digits, true);
    QTest::newRow("keyword in capitals") << pngText("zTXt", "Raw profile type EXIF", digits);
    QTest::newRow("without a segment's prefix")
        << pngText("zTXt", ExifKeyword, rawProfile("exif", exif()));
    QTest::newRow("digits in capitals")
        << pngText("zTXt", ExifKeyword, rawProfile("exif", exifSegment()).toUpper());
    QTest::newRow("name of two words, blanks after the number") << pngText(
        "zTXt", ExifKeyword,
        rawProfile("generic profile", exifSegment())
            .replace(
                QByteArray::number(exifSegment().size()) + '\n',
                QByteArray::number(exifSegment().size()) + " \n"));
    QTest::newRow("segment of Exif")
        << pngText("zTXt", "Raw profile type APP1", rawProfile("generic", exifSegment()));
    QTest::newRow("segment of XMP")
        << pngText("zTXt", "Raw profile type APP1", rawProfile("generic", xmpSegment()));
    QTest::newRow("XMP") << pngText("zTXt", "Raw profile type xmp", rawProfile("xmp", xmp()));
}

void PngProfilesTest::profilesOfProgramsAreRead()
{
    QFETCH(QByteArray, chunk);
    const MessageLog log;

    const Tags tags(pngWithChunks(chunk));

    QCOMPARE(tags.timestamp, QVariant(moment()));
    QCOMPARE(tags.orientation, QVariant(6));
}

void PngProfilesTest::aProfileAfterThePixelsIsRead()
{
    const MessageLog log;
    constexpr int endChunkSize = 12;
    QByteArray content = pngWithChunks({});
    content.insert(
        content.size() - endChunkSize, compressedProfile(rawProfile("exif", exifSegment())));

    QCOMPARE(Tags(content).orientation, QVariant(6));
}

void PngProfilesTest::exifAndXmpProfilesAreReadTogether()
{
    const MessageLog log;
    const QByteArray keyword("Raw profile type APP1");
    const QByteArray date = QByteArray("Exif\0\0", 6) + exifBlock("2020:01:02 03:04:05");
    const QByteArray segment = QByteArray("http://ns.adobe.com/xap/1.0/\0", 29)
        + xmpPacket(R"(xmp:CreateDate="1999-01-01" tiff:Orientation="8")");

    const Tags tags(pngWithChunks(
        pngText("zTXt", keyword, rawProfile("generic", segment))
        + pngText("zTXt", keyword, rawProfile("generic", date))));

    QCOMPARE(tags.timestamp, QVariant(moment()));
    QCOMPARE(tags.orientation, QVariant(8));
}

void PngProfilesTest::theChunkForExifIsBelievedFirst()
{
    const MessageLog log;
    const QByteArray profile =
        compressedProfile(rawProfile("exif", exifBlock("1999:01:01 00:00:00", 3)));
    const QByteArray chunk = pngChunk("eXIf", exif());

    for (const QByteArray& chunks : {profile + chunk, chunk + profile}) {
        const Tags tags(pngWithChunks(chunks));
        QCOMPARE(tags.timestamp, QVariant(moment()));
        QCOMPARE(tags.orientation, QVariant(6));
    }
}

void PngProfilesTest::aDamagedProfileIsPassedOver_data()
{
    QTest::addColumn<QByteArray>("damaged");

    const QByteArray keyword = ExifKeyword + '\0';
    const QByteArray digits = rawProfile("exif", exifSegment());
    const QByteArray size = QByteArray::number(exifSegment().size());
    QTest::newRow("nothing") << pngChunk("zTXt", keyword);
    QTest::newRow("not compressed") << pngChunk("zTXt", keyword + '\0' + digits);
    QTest::newRow("no text") << compressedProfile({});
    QTest::newRow("line breaks") << compressedProfile(QByteArray(100, '\n'));
    QTest::newRow("no number") << compressedProfile(QByteArray(digits).replace(size, "size"));
    QTest::newRow("a negative number")
        << compressedProfile(QByteArray(digits).replace(size, "-" + size));
    QTest::newRow("no digits") << compressedProfile("\nexif\n      82\n");
    QTest::newRow("one line") << compressedProfile("exif 82 4578");
}

void PngProfilesTest::aDamagedProfileIsPassedOver()
{
    QFETCH(QByteArray, damaged);
    const MessageLog log;

    const Tags alone(pngWithChunks(damaged));
    const Tags before(
        pngWithChunks(damaged + compressedProfile(rawProfile("exif", exifSegment()))));

    QCOMPARE(alone.timestamp, QVariant());
    QCOMPARE(alone.orientation, QVariant());
    QCOMPARE(before.timestamp, QVariant(moment()));
    QCOMPARE(before.orientation, QVariant(6));
}

void PngProfilesTest::otherTextsAreNoProfiles_data()
{
    QTest::addColumn<QByteArray>("keyword");

    QTest::newRow("comment") << QByteArray("Comment");
    QTest::newRow("colour profile") << QByteArray("Raw profile type icc");
    QTest::newRow("another word after it") << ExifKeyword + " 2";
    QTest::newRow("no keyword") << QByteArray();
}

void PngProfilesTest::otherTextsAreNoProfiles()
{
    QFETCH(QByteArray, keyword);
    const MessageLog log;

    const Tags tags(pngWithChunks(pngText("zTXt", keyword, rawProfile("exif", exifSegment()))));

    QCOMPARE(tags.timestamp, QVariant());
    QCOMPARE(tags.orientation, QVariant());
}

void PngProfilesTest::compressedXmpIsPassedOver()
{
    const MessageLog log;
    const QByteArray keyword("XML:com.adobe.xmp");
    const QByteArray compressed =
        pngText("iTXt", keyword, xmpPacket(R"(tiff:Orientation="8")"), true);

    QCOMPARE(Tags(pngWithChunks(compressed)).orientation, QVariant());
    QCOMPARE(
        Tags(pngWithChunks(compressed + pngText("iTXt", keyword, xmp()))).orientation, QVariant(6));
}

void PngProfilesTest::manyProfilesBeforeTheTagsHideThem()
{
    const MessageLog log;
    const QByteArray empty = compressedProfile({});
    const QByteArray profile = compressedProfile(rawProfile("exif", exifSegment()));

    QCOMPARE(Tags(pngWithChunks(empty.repeated(3) + profile)).orientation, QVariant(6));
    QCOMPARE(Tags(pngWithChunks(empty.repeated(4) + profile)).orientation, QVariant());
}

void PngProfilesTest::tagsAtTheStartOfALongProfileAreRead()
{
    const MessageLog log;
    constexpr int pictureSize = 300000;
    const QByteArray block = exifSegment() + QByteArray(pictureSize, 'x');

    const Tags tags(pngWithChunks(compressedProfile(rawProfile("exif", block))));

    QCOMPARE(tags.timestamp, QVariant(moment()));
    QCOMPARE(tags.orientation, QVariant(6));
}

QTEST_GUILESS_MAIN(PngProfilesTest)
#include "tst_pngprofiles.moc"
