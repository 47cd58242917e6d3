// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "daemonsession.h"
#include "installedbundles.h"
#include "userstore.h"

#include <QString>
#include <QStringList>
#include <QUrl>

class StoreWatcher;

/// A user's daemon on a phone with a small screen, whose theme has never been set.
class ThemeSession : public DaemonSession
{
public:
    /// In pixels.
    static constexpr int ScreenWidth = 54;
    static constexpr int ScreenHeight = 96;

    ThemeSession();
    ~ThemeSession();
    Q_DISABLE_COPY_MOVE(ThemeSession)

    /// Starts the daemon, and waits until it knows the bundles and the pictures, and has announced
    /// them.
    Q_REQUIRED_RESULT bool startAtRest();

    /// Writes a red picture, wider than high; false if it cannot.
    Q_REQUIRED_RESULT static bool writePicture(const QString& path);
    /// Writes a bundle of a moodset file, which may name the wallpaper "w.png", and that; false if
    /// it cannot.
    Q_REQUIRED_RESULT static bool writeBundle(const QString& name, const QByteArray& content);
    /// The path of a bundle's moodset file.
    static QString bundleFile(const QString& name);

    /// Makes a moodset file or a picture the theme, as a client on the bus does.
    Q_REQUIRED_RESULT static bool set(const QString& path);
    Q_REQUIRED_RESULT static bool set(const QUrl& url);

    /// Makes a picture the theme that can be read; false if it does not become it.
    Q_REQUIRED_RESULT bool setsGoodPicture();

    /// Makes a moodset of a picture, as a client on the bus does.
    Q_REQUIRED_RESULT static bool create(const QString& path);

    /// Edits a moodset as a client on the bus does.
    Q_REQUIRED_RESULT bool edit(const QString& path, const QVariantMap& values);

    /// The same, without waiting for the reply.
    QDBusPendingCall callEdit(const QString& path, const QVariantMap& values);

    /// Asks for a theme and for an edit of a moodset in one go, as clients do that wait for no
    /// reply, and waits until the daemon has dealt with both.
    Q_REQUIRED_RESULT bool setAndEdit(
        const QUrl& url, const QString& path, const QVariantMap& values);

    /// The theme that other processes read in the store, as expectedTheme() gives it.
    static QStringList theme() { return UserStore::values(QStringLiteral("/desktop/")); }
    /// The keys of a moodset that was applied by a request for `request`, after its row.
    /// It has no partner space.
    QStringList expectedTheme(const QString& path, const QString& request);
    QStringList expectedTheme(const QString& path) { return expectedTheme(path, path); }

    /// Whether the daemon has written nothing to the store since the watcher was made. For this,
    /// another picture becomes the theme: what a daemon writes comes in the order of writing.
    Q_REQUIRED_RESULT bool hasWrittenNothing(StoreWatcher* watcher);

    /// The profile values that other processes read: "/com/zavro/profile/general/key='text'".
    static QStringList profile() { return UserStore::values(profileFolder()); }
    static QString profileFolder() { return QStringLiteral("/com/zavro/profile/"); }

    /// The types that have been announced since the last time or the start, in order; -1 if the
    /// daemon does not answer.
    QList<int> takeAnnouncements();

    /// Where the wallpapers made from `source` lie.
    static QString homeWallpaper(const QString& source);
    static QString applicationWallpaper(const QString& source);

private:
    const InstalledBundles m_bundles;
    const UserStore m_store;
};
