// SPDX-License-Identifier: BSD-3-Clause
#include "themefixture.h"

#include "daemonprocess.h"
#include "dconfcommand.h"
#include "failunless.h"
#include "mgconfitem.h"
#include "moodset/managerfactory.h"
#include "moodsetlibrary.h"
#include "picturefile.h"
#include "storetrace.h"
#include "themekeys.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QStandardPaths>
#include <QTest>

namespace {

const QLatin1String ProfileRoot("/com/zavro/profile/");

/// The path of the database, which is made with the first manager.
QString databasePath()
{
    ContentManager::setFactory(makeManager);
    ThemeFixture::moodsets();
    return LibraryDatabase::standardPath();
}

} // namespace

ThemeFixture::FreshStore::FreshStore()
{
    MGConfItem::sync();
    runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/")});
    MGConfItem(QStringLiteral("/vantile/screen/primary/width")).set(ScreenWidth);
    MGConfItem(QStringLiteral("/vantile/screen/primary/height")).set(ScreenHeight);
    MGConfItem::sync();
}

ThemeFixture::ThemeFixture()
    : library(databasePath())
    , theme(nullptr)
    , m_created(&theme, &SystemTheme::moodsetCreated)
{
    folder.makeDirectory(QStringLiteral("pictures"));
    failUnless(
        DaemonProcess::setPicturesFolder(folder.path(QStringLiteral("pictures"))),
        "Cannot set the pictures folder");
    // A server can get the port of an earlier one, whose pictures no longer exist.
    MoodsetLibrary::exec(QStringLiteral("DELETE FROM download;"));
    StoreTrace::take();
}

ThemeFixture::~ThemeFixture()
{
    while (QAbstractEventDispatcher::instance()->hasPendingEvents()) {
        QCoreApplication::processEvents();
    }
}

QString ThemeFixture::addPicture(const QString& name)
{
    const QString path = folder.path(name);
    failUnless(writePicture(path, QSize(40, 30)), "Cannot write the picture");
    return path;
}

QString ThemeFixture::addMoodset(const QByteArray& content, const QString& name)
{
    folder.makeDirectory(QStringLiteral("images"));
    addPicture(QStringLiteral("images/w.png"));
    folder.write(name, content);
    return folder.path(name);
}

QString ThemeFixture::onlinePicture(const QString& name) const
{
    return folder.path(QStringLiteral("pictures/") + name);
}

QList<int> ThemeFixture::takeCreated()
{
    QList<int> ids;
    while (!m_created.isEmpty()) {
        ids.append(m_created.takeFirst().constFirst().toInt());
    }
    return ids;
}

QList<int> ThemeFixture::waitForCreated()
{
    failUnless(QTest::qWaitFor([this] { return !m_created.isEmpty(); }), "No moodset was made");
    return takeCreated();
}

QStringList ThemeFixture::takeKeys()
{
    QStringList keys;
    for (const QString& call : StoreTrace::take()) {
        if (!call.startsWith(ProfileRoot)) {
            keys.append(call);
        }
    }
    return keys;
}

QStringList ThemeFixture::takeProfileValues()
{
    QStringList values;
    for (const QString& call : StoreTrace::take()) {
        if (call.startsWith(ProfileRoot)) {
            values.append(call.mid(ProfileRoot.size()));
        }
    }
    return values;
}

QStringList ThemeFixture::keysOf(const QString& path, const QString& request) const
{
    return ThemeKeys::ofMoodset(library, path, request) + QStringList(QStringLiteral("sync"));
}

QStringList ThemeFixture::partnerSpaceKeys(const QString& path)
{
    return {ThemeKeys::written(ThemeKeys::PartnerSpace, path), QStringLiteral("sync")};
}

QString ThemeFixture::wallpaper(const QString& source, const QString& suffix)
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
        + QStringLiteral("/com/zavro/components/bgimages/") + wallpaperName(source, suffix);
}

MoodsetManager& ThemeFixture::moodsets()
{
    return *MoodsetManager::fromRegistry();
}
