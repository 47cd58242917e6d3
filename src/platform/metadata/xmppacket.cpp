// SPDX-License-Identifier: BSD-3-Clause
#include "xmppacket.h"

#include <exiv2/error.hpp>
#include <exiv2/xmp_exiv2.hpp>

#include <exception>
#include <string>

namespace {

bool startParser()
{
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    return Exiv2::XmpParser::initialize();
}

QByteArray text(const Exiv2::XmpData& data, const char* key)
{
    const auto position = data.findKey(Exiv2::XmpKey(key));
    return position == data.end() ? QByteArray() : QByteArray::fromStdString(position->toString());
}

/// Whether the packet can contain one of our tags. Most packets do not, and searching is much
/// faster than parsing.
bool mentionsTags(const QByteArray& packet)
{
    return packet.contains("DateTimeOriginal") || packet.contains("DateCreated")
        || packet.contains("CreateDate") || packet.contains("Orientation");
}

} // namespace

XmpTags readXmpTags(const QByteArray& packet)
{
    if (!mentionsTags(packet)) {
        return {};
    }
    try {
        static const bool started = startParser();
        Exiv2::XmpData data;
        if (!started || Exiv2::XmpParser::decode(data, packet.toStdString()) != 0) {
            return {};
        }
        return {
            text(data, "Xmp.exif.DateTimeOriginal"), text(data, "Xmp.photoshop.DateCreated"),
            text(data, "Xmp.xmp.CreateDate"), text(data, "Xmp.tiff.Orientation")};
    } catch (const std::exception&) {
        return {}; // The errors of the library have this type, too.
    }
}
