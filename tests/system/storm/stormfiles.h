// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "chance.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class UserFolders;

/// A file that no decoder and no parser is to stumble over, or be held up by.
struct HostileFile
{
    QString suffix;
    /// Makes it at a path where there is nothing.
    std::function<void(const QString& path)> make;
};

/// Those of the storm. To be added to; each takes at most some hundred kilobytes.
const QVector<HostileFile>& hostileFiles();

/// The disk in a storm: the user's pictures and the installed bundles, which come, change and go.
///
/// What a restart does not mend by design is left out. A folder that gets a row before the daemon
/// finds it, since a client asks for a file in it, keeps the folder above it from being scanned. A
/// row that sorts after all there is in its folder stays. When a folder goes, the rows of files
/// below its sub-folders stay.
class StormFiles
{
public:
    StormFiles(const UserFolders& folders, quint32 seed);

    /// Makes the files that stay all the time. False if it cannot.
    Q_REQUIRED_RESULT bool prepare();

    /// Changes something, in any way that a user or a program can.
    void change();
    /// Changes something in a way that the daemon has to follow without a restart: no name is used
    /// twice, no folder comes or goes, and a bundle's new version is complete at once.
    void changeInOrder();

    /// Pictures and moodset files that stay all the time, to be made the theme.
    QStringList themes() const { return m_themes; }
    /// Pictures that stay all the time, to be made moodsets of without becoming the theme.
    QStringList creations() const { return m_creations; }
    /// The folder of the bundle that stays.
    static QString lastingBundle();

    /// A file that is, was or will be there, in a folder that stays.
    QString anyPath(Chance* chance) const;
    /// The folder of a bundle that is, was or will be there.
    static QString anyBundle(Chance* chance);

private:
    QString anyFolder();
    QString anyWanderingFolder();
    bool makeFolder(const QString& path) const;
    /// With "/" in front.
    QString newName();
    QString oddName();
    void addPicture(const QString& path);
    void addOrRemovePicture();
    void moveAnyPicture(const QString& target);
    void changeFolders();
    void addOddity();
    void changeBundle();
    bool writeBundle(const QString& folder);

    const UserFolders& m_folders;
    Chance m_chance;
    QVector<QByteArray> m_pictures;
    /// The folders that stay all the time.
    QStringList m_folderPaths;
    QStringList m_themes;
    QStringList m_creations;
    int m_names = 0;
};
