// SPDX-License-Identifier: BSD-3-Clause
#include "albumgallery.h"
#include "theme/scalingthread.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    // Lines stay as they are read elsewhere, without the category in front. QT_MESSAGE_PATTERN,
    // where it is set, takes the place of this pattern.
    qSetMessagePattern(QStringLiteral("%{message}"));
    QCoreApplication application(argc, argv);
    // The thread pool belongs to the whole process, so no single part of it may change the pool.
    // The thread must exist before any part allocates much memory.
    keepScalingThread();
    AlbumGallery gallery;
    return QCoreApplication::exec();
}
