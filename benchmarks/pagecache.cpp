// SPDX-License-Identifier: BSD-3-Clause
#include "pagecache.h"

#include "measuredprocess.h"

#include <QDirIterator>
#include <QFile>

#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

void dropPages(const QString& folder)
{
    sync(); // Pages that are not on the disk yet stay.
    QDirIterator iterator(folder, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        const QByteArray path = QFile::encodeName(iterator.next());
        const int file = open(path.constData(), O_RDONLY | O_CLOEXEC);
        if (file < 0 || posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) != 0) {
            giveUp("cannot drop the pages of " + path);
        }
        static_cast<void>(close(file)); // Nothing was written.
    }
}

std::optional<double> bytesRead(const QString& folder)
{
    constexpr double sectorSize = 512;
    struct stat status = {};
    if (stat(QFile::encodeName(folder).constData(), &status) != 0) {
        return {};
    }
    std::ifstream counters(
        "/sys/dev/block/" + std::to_string(major(status.st_dev)) + ':'
        + std::to_string(minor(status.st_dev)) + "/stat");
    double reads = 0;
    double mergedReads = 0;
    double sectors = 0;
    if (!(counters >> reads >> mergedReads >> sectors)) {
        return {};
    }
    return sectors * sectorSize;
}
