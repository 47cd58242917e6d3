// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"
#include "librarydatabase.h"
#include "moodset/moodsetmanager.h"
#include "testfolder.h"
#include "theme/systemtheme.h"

#include <QByteArray>
#include <QList>
#include <QSignalSpy>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <memory>

/// A theme with the daemon's managers, its database and its key/value store, and a directory for
/// files. The store has only the values of a small screen. The pictures folder is empty, and the
/// database has no downloads.
class ThemeFixture
{
public:
    /// In pixels.
    static constexpr int ScreenWidth = 60;
    static constexpr int ScreenHeight = 96;

    ThemeFixture();
    /// Makes the file manager read the directory again before the directory is removed.
    ~ThemeFixture();
    Q_DISABLE_COPY_MOVE(ThemeFixture)

    /// Writes a picture. Returns its path.
    QString addPicture(const QString& name = QStringLiteral("a.png"));
    /// Writes a moodset file, which may name the wallpaper "w.png". Returns its path.
    QString addMoodset(
        const QByteArray& content, const QString& name = QStringLiteral("a.moodset"));
    /// A path in the pictures folder.
    QString onlinePicture(const QString& name) const;

    /// Requests a moodset, as setMoodset and createMoodset do.
    void set(const QString& path) { set(QUrl::fromLocalFile(path)); }
    void set(const QUrl& url) { theme.generateMoodset(url, true); }
    void create(const QString& path) { create(QUrl::fromLocalFile(path)); }
    void create(const QUrl& url) { theme.generateMoodset(url, false); }

    /// The ids for which moodsetCreated() was emitted since the last call.
    QList<int> takeCreated();
    /// Waits for one such id, and returns the same.
    QList<int> waitForCreated();
    /// The writes to the store since the last call, without the values of profiles.
    static QStringList takeKeys();
    /// The values of profiles that were written since the last call: "general/key='text'". It also
    /// takes what takeKeys() would return.
    static QStringList takeProfileValues();
    /// The result of takeKeys() after a moodset was applied: its eight keys, with the values of its
    /// present row, and the sync. `request` is the value of the first key.
    QStringList keysOf(const QString& path, const QString& request) const;
    QStringList keysOf(const QString& path) const { return keysOf(path, path); }
    /// The write and the sync of the partner space.
    static QStringList partnerSpaceKeys(const QString& path = QString());

    /// The id of a file's row; 0 if it has none.
    qint64 fileId(const QString& path) const { return library.fileId(path); }
    /// Columns of the moodset of a file, as texts; empty if it has none.
    QStringList moodsetRow(const QString& path, const QString& columns) const
    {
        return library.moodset(path, columns);
    }
    /// The path of a wallpaper that is made from `source`; `suffix` is "hp.jpg" or "ap.jpg".
    static QString wallpaper(const QString& source, const QString& suffix);

    /// The manager of the registry.
    static MoodsetManager& moodsets();

private:
    struct FreshStore
    {
        FreshStore();
    };
    FreshStore m_freshStore;

public:
    TestFolder folder;
    LibraryDatabase library;
    SystemTheme theme;

private:
    QSignalSpy m_created;
};
