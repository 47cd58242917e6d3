// SPDX-License-Identifier: BSD-3-Clause
#include "albumgallery.h"

#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    AlbumGallery gallery;
    return QCoreApplication::exec();
}
