// SPDX-License-Identifier: BSD-3-Clause
#include "portalsconf.h"

#include "filecontent.h"

#include <QFile>
#include <QStandardPaths>

QString portalsConf()
{
    return QStringLiteral("[preferred]\n"
                          "default=gtk\n"
                          "org.freedesktop.impl.portal.Settings=moodset;gtk\n");
}

QString installPortalsConf()
{
    const QString path = portalsConfPath();
    if (QFile::exists(path)) {
        return QStringLiteral("%1 exists, and stays as it is. It needs this line in the group "
                              "[preferred]: org.freedesktop.impl.portal.Settings=moodset;gtk")
            .arg(path);
    }
    return writeWhole(path, portalsConf().toUtf8());
}

QString portalsConfPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/xdg-desktop-portal/portals.conf");
}
