// SPDX-License-Identifier: BSD-3-Clause
#include "themesession.h"

#include "storewatcher.h"
#include "themekeys.h"

#include <QDBusMessage>
#include <QDir>
#include <QImage>
#include <QTest>
#include <QUrl>

namespace {

constexpr int MoodsetType = 1;

QString cacheFolder()
{
    return qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/moodsetd");
}

QString wallpaper(const QString& source, const QString& suffix)
{
    return cacheFolder() + QStringLiteral("/com/zavro/components/bgimages/")
        + wallpaperName(source, suffix);
}

bool isReply(const QDBusMessage& message)
{
    return message.type() == QDBusMessage::ReplyMessage;
}

} // namespace

ThemeSession::ThemeSession()
    : m_bundles(folders)
{
    QDir(cacheFolder()).removeRecursively();
    UserStore::writeScreenSize(QSize(ScreenWidth, ScreenHeight));
}

ThemeSession::~ThemeSession()
{
    if (daemon.isRunning()) {
        daemon.terminate();
    }
}

bool ThemeSession::startAtRest()
{
    const QString unread = QStringLiteral(
        "SELECT count(*) FROM file WHERE metadataCurrent = 0 AND fileName GLOB '*.moodset'");
    return m_bundles.isValid() && m_store.isValid() && DaemonSession::startAtRest()
        && QTest::qWaitFor(
               [&] { return library().value(unread).toInt() == 0; }, DaemonProcess::deadlineMs)
        && forgetAnnouncements();
}

bool ThemeSession::writePicture(const QString& path)
{
    QImage picture(200, 120, QImage::Format_RGB32);
    picture.fill(Qt::red);
    return picture.save(path);
}

bool ThemeSession::writeBundle(const QString& name, const QByteArray& content)
{
    const QString images = InstalledBundles::folder() + name + QStringLiteral("/images");
    return QDir().mkpath(images) && writePicture(images + QStringLiteral("/w.png"))
        && InstalledBundles::write(bundleFile(name), content);
}

QString ThemeSession::bundleFile(const QString& name)
{
    return InstalledBundles::folder() + QStringLiteral("%1/%1.moodset").arg(name);
}

bool ThemeSession::set(const QString& path)
{
    return set(QUrl::fromLocalFile(path));
}

bool ThemeSession::set(const QUrl& url)
{
    return isReply(
        BusClient::call(QStringLiteral("setMoodset"), {QString::fromUtf8(url.toEncoded())}));
}

bool ThemeSession::setsGoodPicture()
{
    const QString path = folders.elsewhere(QStringLiteral("good.png"));
    return writePicture(path) && set(path) && theme() == expectedTheme(path);
}

bool ThemeSession::create(const QString& path)
{
    return isReply(
        BusClient::call(QStringLiteral("createMoodset"), {QUrl::fromLocalFile(path).toString()}));
}

bool ThemeSession::edit(const QString& path, const QVariantMap& values)
{
    return isReply(
        BusClient::call(QStringLiteral("saveAttributes"), {MoodsetType, fileId(path), values}));
}

QDBusPendingCall ThemeSession::callEdit(const QString& path, const QVariantMap& values)
{
    return BusClient::callLater(
        QStringLiteral("saveAttributes"), {MoodsetType, fileId(path), values});
}

bool ThemeSession::setAndEdit(const QUrl& url, const QString& path, const QVariantMap& values)
{
    if (!daemon.pause()) {
        return false;
    }
    BusClient::send(QStringLiteral("setMoodset"), {QString::fromUtf8(url.toEncoded())});
    callEdit(path, values);
    daemon.resume();
    return BusClient::isAnswered();
}

QStringList ThemeSession::expectedTheme(const QString& path, const QString& request)
{
    QStringList keys = ThemeKeys::ofMoodset(library(), path, request);
    keys.append(ThemeKeys::written(ThemeKeys::PartnerSpace, QString()));
    keys.sort();
    return keys;
}

bool ThemeSession::hasWrittenNothing(StoreWatcher* watcher)
{
    const QString path = folders.elsewhere(QStringLiteral("another.png"));
    return writePicture(path) && set(path) && watcher->catchUp()
        && watcher->announcements().value(0) == QStringList(ThemeKeys::Picture);
}

QList<int> ThemeSession::takeAnnouncements()
{
    if (!waitUntilAnnounced()) {
        return {-1};
    }
    QList<int> types = client.announcements();
    types.removeOne(LastAnnouncedType);
    client.forgetAnnouncements();
    return types;
}

QString ThemeSession::homeWallpaper(const QString& source)
{
    return wallpaper(source, QStringLiteral("hp.jpg"));
}

QString ThemeSession::applicationWallpaper(const QString& source)
{
    return wallpaper(source, QStringLiteral("ap.jpg"));
}
