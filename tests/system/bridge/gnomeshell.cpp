// SPDX-License-Identifier: BSD-3-Clause
#include "gnomeshell.h"

#include "bridgesession.h"

#include <QFile>
#include <QUrl>

GnomeShell::GnomeShell()
    : PlayedService(QDBusConnection::SessionBus, QStringLiteral("org.gnome.Shell"))
{
}

QString shownPicture()
{
    return QUrl(BridgeSession::stored(BridgeSession::PictureUriKey)).toLocalFile();
}

bool showsCopyOf(const QString& path)
{
    const QString copyPath = shownPicture();
    QFile file(path);
    QFile copy(copyPath);
    return !copyPath.isEmpty() && file.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadOnly)
        && file.readAll() == copy.readAll();
}

bool hasAccent(const QString& name)
{
    return waitUntil([&] { return BridgeSession::stored(BridgeSession::AccentKey) == name; });
}
