// SPDX-License-Identifier: BSD-3-Clause
#include "pngtagblocks.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <zlib.h>

#include <vector>

namespace {

/// The number of digits for the content of the largest segment of a JPEG file, with line breaks. No
/// more than this is read or decompressed, whatever a chunk claims.
constexpr int MaximumText = 0x22000;
/// The maximum number of texts of a file that are decoded.
constexpr int MaximumProfiles = 4;

/// A chunk of text, without its head.
struct TextChunk
{
    QByteArray keyword;
    bool isCompressed = false;
    FileRange text;
};

/// The chunk of this type with the content `range`. A damaged chunk has no keyword.
TextChunk readTextChunk(WindowedFile& file, const QByteArray& type, const FileRange& range)
{
    constexpr qint64 maximumHead = 256;
    ByteReader head(file.read(range.offset, int(qMin(range.length, maximumHead))));
    TextChunk chunk;
    chunk.keyword = head.takeText();
    if (type == "zTXt") {
        chunk.isCompressed = true;
        head.u8(); // the method of compression
    } else if (type == "iTXt") {
        chunk.isCompressed = head.u8() != 0;
        head.u8(); // the method of compression
        head.takeText(); // the language
        head.takeText(); // the translated keyword
    }
    chunk.text = {range.offset + head.position(), range.length - head.position()};
    return head.isGood() ? chunk : TextChunk();
}

/// Decompresses the beginning of `compressed`, up to MaximumText bytes.
QByteArray inflatedStart(QByteArray compressed)
{
    z_stream stream = {};
    if (inflateInit(&stream) != Z_OK) {
        return {};
    }
    QByteArray text(MaximumText, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<Bytef*>(compressed.data());
    stream.avail_in = static_cast<uInt>(compressed.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    // The status does not matter, because the beginning of a damaged text may be enough.
    static_cast<void>(inflate(&stream, Z_SYNC_FLUSH));
    text.truncate(int(stream.total_out));
    static_cast<void>(inflateEnd(&stream));
    return text;
}

/// The kind of block that a text with this keyword has.
enum class ProfileKind { None, Segment, Exif, Xmp };

ProfileKind profileKind(const QByteArray& keyword)
{
    static const QByteArray prefix("raw profile type ");
    const QByteArray lowered = keyword.toLower();
    if (lowered == prefix + "app1") {
        return ProfileKind::Segment;
    }
    if (lowered == prefix + "exif") {
        return ProfileKind::Exif;
    }
    return lowered == prefix + "xmp" ? ProfileKind::Xmp : ProfileKind::None;
}

/// The bytes of a text with these lines: a name, the number of bytes, and digits.
QByteArray profileBytes(const QByteArray& text)
{
    int name = 0;
    while (name < text.size() && text.at(name) == '\n') {
        ++name;
    }
    const int number = text.indexOf('\n', name) + 1;
    const int digits = text.indexOf('\n', number) + 1;
    if (number == 0 || digits == 0) {
        return {};
    }
    const int size = text.mid(number, digits - number).trimmed().toInt();
    return QByteArray::fromHex(text.mid(digits)).left(qMax(size, 0));
}

/// A text that may contain a block.
struct Profile
{
    ProfileKind kind;
    bool isCompressed;
    QByteArray text;
};

Profile readProfile(WindowedFile& file, const TextChunk& chunk)
{
    const auto size = int(qMin<qint64>(chunk.text.length, MaximumText));
    return {profileKind(chunk.keyword), chunk.isCompressed, file.read(chunk.text.offset, size)};
}

void takeProfile(WindowedFile& file, const Profile& profile, TagBlocks* blocks)
{
    const TagBlock block(
        profileBytes(profile.isCompressed ? inflatedStart(profile.text) : profile.text));
    takeApplicationSegment(file, block, blocks);
    switch (profile.kind) {
    case ProfileKind::None:
    case ProfileKind::Segment:
        break;
    case ProfileKind::Exif: // without the prefix of a segment
        blocks->takeExif(block);
        break;
    case ProfileKind::Xmp:
        blocks->takeXmp(block);
        break;
    }
}

/// Reads the chunks of a PNG file that can have tags, in their order.
class ChunkReader
{
public:
    explicit ChunkReader(WindowedFile& file)
        : m_file(file)
    {
    }

    TagBlocks read()
    {
        constexpr qint64 signatureSize = 8;
        constexpr int headSize = 8;
        constexpr int checksumSize = 4;
        qint64 offset = signatureSize;
        while (!m_blocks.isComplete()) {
            ByteReader head(m_file.read(offset, headSize));
            const qint64 length = head.u32();
            const QByteArray type = head.take(4);
            if (!head.isGood() || type == "IEND") {
                break;
            }
            take(type, {offset + headSize, length});
            offset += headSize + length + checksumSize;
        }
        // These come last, because the chunks for tags have priority.
        for (const Profile& profile : m_profiles) {
            if (!m_blocks.isComplete()) {
                takeProfile(m_file, profile, &m_blocks);
            }
        }
        return m_blocks;
    }

private:
    void take(const QByteArray& type, const FileRange& content)
    {
        if (type == "eXIf") {
            m_blocks.takeExif(content);
        } else if (type == "tEXt" || type == "zTXt" || type == "iTXt") {
            takeText(type, readTextChunk(m_file, type, content));
        }
    }

    void takeText(const QByteArray& type, const TextChunk& chunk)
    {
        // The rules for XMP in PNG files forbid compression.
        if (type == "iTXt" && chunk.keyword == "XML:com.adobe.xmp" && !chunk.isCompressed) {
            m_blocks.takeXmp(chunk.text);
        } else if (
            profileKind(chunk.keyword) != ProfileKind::None
            && m_profiles.size() < MaximumProfiles) {
            // It is read now, because all reads that the file allows may be used up at its end.
            m_profiles.push_back(readProfile(m_file, chunk));
        }
    }

    WindowedFile& m_file;
    TagBlocks m_blocks;
    std::vector<Profile> m_profiles;
};

} // namespace

TagBlocks findInPng(WindowedFile& file)
{
    return ChunkReader(file).read();
}
