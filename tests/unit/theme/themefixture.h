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

/// A theme with the daemon's managers, its database and its store, which has no values but those of
/// a small screen, and a folder for what goes into it. The pictures folder is empty, and the
/// database knows of no downloads.
class ThemeFixture
{
public:
    /// In pixels.
    static constexpr int ScreenWidth = 60;
    static constexpr int ScreenHeight = 96;

    ThemeFixture();
    /// Lets the file manager look at the folder once more before that goes.
    ~ThemeFixture();
    Q_DISABLE_COPY_MOVE(ThemeFixture)

    /// Writes a picture and gives its path.
    QString addPicture(const QString& name = QStringLiteral("a.png"));
    /// Writes a moodset file, which may name the wallpaper "w.png", and gives its path.
    QString addMoodset(
        const QByteArray& content, const QString& name = QStringLiteral("a.moodset"));
    /// A path in the pictures folder.
    QString onlinePicture(const QString& name) const;

    /// Asks for a moodset, as setMoodset and createMoodset do.
    void set(const QString& path) { set(QUrl::fromLocalFile(path)); }
    void set(const QUrl& url) { theme.generateMoodset(url, true); }
    void create(const QString& path) { create(QUrl::fromLocalFile(path)); }
    void create(const QUrl& url) { theme.generateMoodset(url, false); }

    /// The ids that moodsetCreated() has told of since the last time.
    QList<int> takeCreated();
    /// The same, after a wait for one.
    QList<int> waitForCreated();
    /// What the store was asked for since the last time, less the values of profiles.
    static QStringList takeKeys();
    /// The values of profiles that were written since the last time: "general/key='text'". Takes
    /// what takeKeys() would give.
    static QStringList takeProfileValues();
    /// The eight keys of a moodset that was applied, and then the sync, as takeKeys() gives
    /// them, after the row that it has now. `request` is what the first key is to hold.
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
    /// Where a wallpaper made from `source` lies; `suffix` is "hp.jpg" or "ap.jpg".
    static QString wallpaper(const QString& source, const QString& suffix);

    /// The registry's.
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
