// SPDX-License-Identifier: BSD-3-Clause
#include "filecontent.h"

#include <filereplacement.h>
#include <regularfile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <sys/stat.h>

std::optional<QByteArray> readWhole(const QString& path, qint64 largest)
{
    const RegularFile file(path);
    if (!file.isOpen() || file.size() > largest) {
        return std::nullopt;
    }
    return file.read(0, int(file.size()));
}

QString fileStamp(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return QStringLiteral("%1 %2 %3.%4")
        .arg(quint64(status.st_ino))
        .arg(qint64(status.st_size))
        .arg(qint64(status.st_mtim.tv_sec))
        .arg(qint64(status.st_mtim.tv_nsec));
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
    constexpr qint64 largest = qint64(64) * 1024 * 1024;
    const RegularFile file(path);
    if (file.size() > largest) {
        return {};
    }
    const QByteArray bytes = file.read(0, 8).value_or(QByteArray());
    if (bytes.startsWith("\xff\xd8\xff")) {
        return QStringLiteral("jpg");
    }
    return bytes == "\x89PNG\r\n\x1a\n" ? QStringLiteral("png") : QString();
}

bool isPlayableTone(const QString& path)
{
    // In front of the first packet, an Ogg page has 27 bytes and a table with one segment.
    constexpr int packetOffset = 28;
    const QByteArray bytes = RegularFile(path).read(0, packetOffset + 7).value_or(QByteArray());
    return (bytes.startsWith("RIFF") && bytes.mid(8, 4) == "WAVE")
        || (bytes.startsWith("OggS") && bytes.mid(packetOffset) == "\x01vorbis");
}
