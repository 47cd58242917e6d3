// SPDX-License-Identifier: BSD-3-Clause
#include "installedbundles.h"

#include "command.h"
#include "userfolders.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

InstalledBundles::InstalledBundles(const UserFolders& folders)
{
    const QString mime = folders.data() + QStringLiteral("/mime");
    m_valid = QDir().mkpath(mime + QStringLiteral("/packages"))
        && QFile::copy(
                  QStringLiteral(MIME_DEFINITION), mime + QStringLiteral("/packages/moodsetd.xml"))
        && runCommand(QStringLiteral("update-mime-database"), {mime});
}

InstalledBundles::~InstalledBundles()
{
    for (const QString& path :
         {folder(), QStringLiteral("/usr/share/sounds"), QStringLiteral("/usr/share/translations"),
          QStringLiteral("/usr/share/applications")}) {
        QDirIterator entries(path, QDir::AllEntries | QDir::NoDotAndDotDot);
        while (entries.hasNext()) {
            const QString entry = entries.next();
            entries.fileInfo().isDir() ? QDir(entry).removeRecursively() : QFile::remove(entry);
        }
    }
}

bool InstalledBundles::installSample(const QString& name)
{
    return runCommand(
        QStringLiteral("cp"),
        {QStringLiteral("-r"), QStringLiteral(SAMPLE_BUNDLES "/") + name, folder()});
}

bool InstalledBundles::write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
        && file.write(content) == content.size();
}
