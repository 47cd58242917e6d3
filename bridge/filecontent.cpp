// SPDX-License-Identifier: BSD-3-Clause
#include "filecontent.h"

#include <filereplacement.h>
#include <regularfile.h>

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace {

QByteArray firstBytes(const QString& path, int length)
{
    return RegularFile(path).read(0, length).value_or(QByteArray());
}

} // namespace

std::optional<QByteArray> readWhole(const QString& path, qint64 largest)
{
    const RegularFile file(path);
    if (!file.isOpen() || file.size() > largest) {
        return std::nullopt;
    }
    return file.read(0, int(file.size()));
}

QString fileUri(const QString& path)
{
    return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded));
}

QString writeWhole(const QString& path, const QByteArray& content)
{
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return QStringLiteral("The directory of %1 cannot be made").arg(path);
    }
    const QString problem = replaceFile(path, content);
    return problem.isEmpty() ? QString()
                             : QStringLiteral("%1 cannot be written: %2").arg(path, problem);
}

QString pictureSuffix(const QString& path)
{
    const QByteArray bytes = firstBytes(path, 8);
    if (bytes.startsWith("\xff\xd8\xff")) {
        return QStringLiteral("jpg");
    }
    return bytes == "\x89PNG\r\n\x1a\n" ? QStringLiteral("png") : QString();
}

bool isPlayableTone(const QString& path)
{
    // In front of the first packet, an Ogg page has 27 bytes and a table with one segment.
    constexpr int packetOffset = 28;
    const QByteArray bytes = firstBytes(path, packetOffset + 7);
    return (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WAVE")
        || (bytes.startsWith("OggS") && bytes.mid(packetOffset) == "\x01vorbis");
}
