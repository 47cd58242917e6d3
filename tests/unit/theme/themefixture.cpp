// SPDX-License-Identifier: BSD-3-Clause
#include "themefixture.h"

#include "content/contentmanager.h"
#include "content/moodsetcontent.h"
#include "daemonprocess.h"
#include "dconfcommand.h"
#include "mgconfitem.h"
#include "picturefile.h"
#include "storetrace.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QFileInfo>
#include <QStandardPaths>
#include <QtTest>

namespace {

const QLatin1String ProfileRoot("/com/zavro/profile/");

void require(bool condition, const char* what)
{
    if (!condition) {
        QTest::qFail(what, __FILE__, __LINE__);
    }
}

QString written(const char* key, const QString& value)
{
    return QStringLiteral("%1='%2'").arg(QLatin1String(key), value);
}

/// The path of the database, which is made with the first manager.
QString databasePath()
{
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
    require(
        DaemonProcess::setPicturesFolder(folder.path(QStringLiteral("pictures"))),
        "Cannot set the pictures folder");
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
    require(writePicture(path, QSize(40, 30)), "Cannot write the picture");
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
    require(QTest::qWaitFor([this] { return !m_created.isEmpty(); }), "No moodset was made");
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
    const QStringList row = moodsetRow(
        path,
        QStringLiteral("homeWallpaper, applicationWallpaper, highlightColor, "
                       "secondaryHighlightColor, primaryColor, secondaryColor"));
    return {
        written("/desktop/tuvalo/background/portrait/picture_filename", request),
        written("/desktop/zavro/background/portrait/home_picture_filename", row.value(0)),
        written("/desktop/zavro/background/portrait/app_picture_filename", row.value(1)),
        written("/desktop/zavro/theme/color/highlight", row.value(2)),
        written("/desktop/zavro/theme/color/secondaryHighlight", row.value(3)),
        written("/desktop/zavro/theme/color/primary", row.value(4)),
        written("/desktop/zavro/theme/color/secondary", row.value(5)),
        written("/desktop/zavro/theme/active_moodset", path),
        QStringLiteral("sync")};
}

QStringList ThemeFixture::partnerSpaceKeys(const QString& path)
{
    return {
        written("/desktop/vantile-zavro-home/partnerspace/moodset", path), QStringLiteral("sync")};
}

qint64 ThemeFixture::fileId(const QString& path) const
{
    const QFileInfo file(path);
    const LibraryDatabase::Rows rows = library.rows(
        QStringLiteral("SELECT file.id FROM file JOIN directory ON directory.id = directoryId "
                       "WHERE path = ? AND fileName = ?"),
        {file.path(), file.fileName()});
    return rows.isEmpty() ? 0 : rows.constFirst().constFirst().toLongLong();
}

QStringList ThemeFixture::moodsetRow(const QString& path, const QString& columns) const
{
    QStringList texts;
    const LibraryDatabase::Rows rows = library.rows(
        QStringLiteral("SELECT %1 FROM moodset WHERE fileId = ?").arg(columns), {fileId(path)});
    for (const QVariantList& row : rows) {
        for (const QVariant& value : row) {
            texts.append(value.toString());
        }
    }
    return texts;
}

QString ThemeFixture::wallpaper(const QString& source, const QString& suffix)
{
    uint hash = 0;
    for (const QChar character : source) {
        hash = 31 * hash + character.unicode();
    }
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation)
        + QStringLiteral("/com/zavro/components/bgimages/") + QString::number(hash, 16) + suffix;
}

MoodsetManager& ThemeFixture::moodsets()
{
    return *static_cast<MoodsetManager*>(ContentManager::managerFromType(MoodsetContent::Moodset));
}
