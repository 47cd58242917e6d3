// SPDX-License-Identifier: BSD-3-Clause
#include "partnerspacemanager.h"

#include "accessorylog.h"
#include "mgconfitem.h"

#include <QFile>

namespace {

/// The path of an application's desktop entry, empty if there is none.
QString desktopEntry(const QString& name)
{
    QString path = QStringLiteral("/usr/share/applications/") + name + QStringLiteral(".desktop");
    if (!QFile::exists(path)) {
        qCWarning(accessoryLog) << "void PartnerSpaceManager::setPartnerSpace(const QString&)"
                                << "Failed to find .desktop file for partner space!" << path;
        return QString();
    }
    return path;
}

} // namespace

PartnerSpaceManager* PartnerSpaceManager::instance()
{
    static PartnerSpaceManager manager;
    return &manager;
}

void PartnerSpaceManager::setPartnerSpace(const QString& name)
{
    MGConfItem item(QStringLiteral("/desktop/vantile-zavro-home/partnerspace/moodset"));
    item.set(name.isEmpty() ? QString() : desktopEntry(name));
    MGConfItem::sync();
}
