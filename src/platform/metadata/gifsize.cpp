// SPDX-License-Identifier: BSD-3-Clause
#include "headersize.h"

#include "bytereader.h"
#include "windowedfile.h"

#include <QByteArray>

namespace {

using Order = ByteReader::Order;

constexpr int SignatureSize = 6;
constexpr int ScreenSize = 7;
constexpr int ColorSize = 3;

/// The screen on which the frames are shown.
struct Screen
{
    int width = 0;
    int height = 0;
    /// The offset of the first block.
    qint64 end = 0;
};

std::optional<Screen> readScreen(WindowedFile& file)
{
    constexpr quint8 hasColors = 0x80;
    ByteReader reader(file.read(SignatureSize, ScreenSize), Order::LittleEndian);
    Screen screen{reader.u16(), reader.u16(), SignatureSize + ScreenSize};
    const quint8 flags = reader.u8();
    reader.take(2);
    if ((flags & hasColors) != 0) {
        screen.end += ColorSize << ((flags & 7) + 1);
    }
    return reader.isGood() ? std::make_optional(screen) : std::nullopt;
}

/// Whether the first block of an extension has the required length.
bool isExtension(quint8 label, quint8 firstLength)
{
    constexpr quint8 graphicControl = 0xf9;
    constexpr quint8 graphicControlSize = 4;
    constexpr quint8 application = 0xff;
    constexpr quint8 applicationSize = 11;
    switch (label) {
    case graphicControl:
        return firstLength == graphicControlSize;
    case application:
        return firstLength == applicationSize;
    }
    return true;
}

/// The offset after the extension at `offset`; nothing if the file ends before.
std::optional<qint64> endOfExtension(WindowedFile& file, qint64 offset)
{
    constexpr int headSize = 2;
    ByteReader head(file.read(offset + 1, headSize));
    const quint8 label = head.u8();
    if (!isExtension(label, head.u8())) {
        return {};
    }
    offset += headSize;
    while (true) {
        ByteReader block(file.read(offset, 1));
        const quint8 length = block.u8();
        if (!block.isGood()) {
            return {};
        }
        offset += 1 + length;
        if (length == 0) {
            return offset;
        }
    }
}

/// One side of the picture. If the screen is much larger than the first frame, it does not count.
int sideOf(int screen, int frameStart, int frame)
{
    constexpr int smallFrame = 200;
    constexpr int times = 10;
    const bool isBelieved = screen > 0 && screen / times <= qMax(frame, smallFrame);
    return isBelieved ? screen : frameStart + frame;
}

std::optional<QSize> sizeOnScreen(WindowedFile& file, const Screen& screen, qint64 frame)
{
    constexpr int placeSize = 9;
    ByteReader reader(file.read(frame + 1, placeSize), Order::LittleEndian);
    const int left = reader.u16();
    const int top = reader.u16();
    const int width = reader.u16();
    const int height = reader.u16();
    reader.u8(); // the colours
    const QSize size(sideOf(screen.width, left, width), sideOf(screen.height, top, height));
    return reader.isGood() && !size.isEmpty() ? std::make_optional(size) : std::nullopt;
}

} // namespace

std::optional<QSize> gifSize(WindowedFile& file)
{
    constexpr quint8 extension = 0x21;
    constexpr quint8 frame = 0x2c;
    const std::optional<Screen> screen = readScreen(file);
    std::optional<qint64> offset = screen ? std::make_optional(screen->end) : std::nullopt;
    while (offset) {
        const quint8 kind = ByteReader(file.read(*offset, 1)).u8();
        if (kind == frame) {
            return sizeOnScreen(file, *screen, *offset);
        }
        offset = kind == extension ? endOfExtension(file, *offset) : std::nullopt;
    }
    return {};
}
