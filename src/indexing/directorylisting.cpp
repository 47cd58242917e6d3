// SPDX-License-Identifier: BSD-3-Clause
#include "directorylisting.h"

#include "filename.h"
#include "indexinglog.h"
#include "sortedmerge.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace {

/// Almost all names are ASCII, and need no further check.
bool isAscii(const QByteArray& name)
{
    return std::all_of(
        name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

struct DirectoryClose
{
    void operator()(DIR* directory) const { closedir(directory); }
};

using OpenDirectory = std::unique_ptr<DIR, DirectoryClose>;

/// What an iterator that has found nothing may have found nothing in.
enum class Emptiness {
    Believed, ///< It is empty, it has gone, or it may not be read.
    Doubtful, ///< It has entries by now.
    Unknown ///< It cannot be opened for want of file descriptors or memory.
};

bool isListed(const QFileInfo& entry, QDir::Filters filters)
{
    return entry.isDir() ? filters.testFlag(QDir::Dirs)
                         : filters.testFlag(QDir::Files) && entry.isFile();
}

Emptiness emptiness(const QString& path, QDir::Filters filters)
{
    const OpenDirectory directory(opendir(QFile::encodeName(path).constData()));
    if (!directory) {
        const bool isShort = errno == EMFILE || errno == ENFILE || errno == ENOMEM;
        return isShort ? Emptiness::Unknown : Emptiness::Believed;
    }
    while (const dirent* const entry = readdir(directory.get())) {
        const QByteArray bytes(entry->d_name);
        if (bytes.startsWith('.')) {
            continue;
        }
        const std::optional<QString> name = decodeFileName(bytes);
        if (name && isListed(QFileInfo(path + QLatin1Char('/') + *name), filters)) {
            return Emptiness::Doubtful;
        }
    }
    return Emptiness::Believed;
}

} // namespace

bool listEntries(
    const QString& path, QDir::Filters filters,
    const std::function<void(const QDirIterator& entry)>& found)
{
    // Another thread can hold the last descriptor at one moment and not at the next.
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        QDirIterator iterator(path, filters);
        if (iterator.hasNext()) {
            while (iterator.hasNext()) {
                iterator.next();
                found(iterator);
            }
            return true;
        }
        const Emptiness state = emptiness(path, filters);
        if (state != Emptiness::Doubtful) {
            return state == Emptiness::Believed;
        }
    }
    return false;
}

void warnOfUnlisted(const char* function, const QString& path)
{
    qCWarning(indexingLog) << function << "Too few file descriptors are left for" << path;
}

std::optional<DirectoryListing> listDirectory(const QString& path)
{
    DirectoryListing listing;
    const auto append = [&listing](const QDirIterator& iterator) {
        const QString entryPath = iterator.filePath();
        const QFileInfo info = iterator.fileInfo();
        const QString fileName = info.fileName();
        if (!info.isDir()) {
            listing.files.append(
                {fileName.toUtf8(), entryPath, fileName, info.lastModified(), info.isFile()});
        } else if (!info.isSymLink()) {
            listing.directories.append({fileName.toUtf8(), entryPath});
        }
    };
    if (!listEntries(path, QDir::Dirs | QDir::Files | QDir::NoDot | QDir::NoDotDot, append)) {
        return std::nullopt;
    }
    sortByName(&listing.files);
    sortByName(&listing.directories);
    return listing;
}

QVector<UndecodableEntry> listUndecodable(const QString& path)
{
    const QByteArray directoryPath = QFile::encodeName(path);
    const OpenDirectory directory(opendir(directoryPath.constData()));
    if (!directory) {
        return {};
    }
    QVector<UndecodableEntry> entries;
    while (const dirent* const entry = readdir(directory.get())) {
        const QByteArray name(entry->d_name);
        if (name.startsWith('.') || isAscii(name) || decodeFileName(name)) {
            continue;
        }
        const QByteArray entryPath = directoryPath + '/' + name;
        struct stat status = {};
        // If stat() fails, the entry is neither a file nor a directory.
        stat(entryPath.constData(), &status);
        entries.append({entryPath, S_ISREG(status.st_mode), S_ISDIR(status.st_mode)});
    }
    return entries;
}
