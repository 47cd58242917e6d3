// SPDX-License-Identifier: BSD-3-Clause
#include "stormcalls.h"

#include "httpserver.h"
#include "installedbundles.h"
#include "stormfiles.h"

#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QUrl>

#include <limits>

#include <unistd.h>

namespace {

constexpr int MoodsetType = 1;

const QStringList ColorNames{
    QStringLiteral("highlightColor"), QStringLiteral("secondaryHighlightColor"),
    QStringLiteral("primaryColor"), QStringLiteral("secondaryColor")};

const QStringList OtherNames{
    QStringLiteral("displayName"),
    QStringLiteral("favorite"),
    QStringLiteral("ringerVolume"),
    QStringLiteral("ringerToneEnabled"),
    QStringLiteral("chatToneEnabled"),
    QStringLiteral("clockAlarmToneEnabled"),
    QStringLiteral("source"),
    QStringLiteral("homeWallpaper"),
    QStringLiteral("no such attribute"),
    QString()};

const QStringList BadUrls{
    QString(),
    QStringLiteral("http://"),
    QStringLiteral("http:///a.png"),
    QStringLiteral("http://127.0.0.1:1/a.png"),
    QStringLiteral("ftp://127.0.0.1:1/a.png"),
    QStringLiteral("data:image/png;base64,AAAA"),
    QStringLiteral("qrc:/a.png"),
    QStringLiteral("file:///no/such/file.png"),
    QStringLiteral("file://host/a.png"),
    QStringLiteral("file:///dev/null"),
    QStringLiteral("file:///"),
    QStringLiteral("/home/u/a.jpg"),
    QStringLiteral("::::"),
    QStringLiteral("%zz"),
    QString(5000, QLatin1Char('a'))};

/// No folder of pictures, which would be a package from then on.
const QStringList BadPackages{
    QString(),
    QStringLiteral("relative"),
    QStringLiteral("/no/such/package"),
    InstalledBundles::folder(),
    InstalledBundles::folder() + QStringLiteral("b0/b0.moodset"),
    QStringLiteral("/usr/share/sounds"),
    QStringLiteral("/dev/null")};

StormCall saveCall(int type, qint64 id, const QVariantMap& attributes)
{
    return {QStringLiteral("saveAttributes"), {type, id, attributes}};
}

QString fileUrl(const QString& path)
{
    return QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded());
}

} // namespace

StormCalls::StormCalls(const StormFiles& files, const HttpServer& server, quint32 seed)
    : m_files(files)
    , m_server(server)
    , m_chance(seed)
{
}

QList<StormCall> StormCalls::any()
{
    switch (m_chance.below(20)) {
    case 0:
        return {{QStringLiteral("refreshMoodsets"), {}}};
    case 1:
        return {malformed()};
    case 2:
        return {{QStringLiteral("remove"), {m_chance.below(10) - 1, id()}}};
    case 3:
    case 4:
        return {{QStringLiteral("indexFile"), {url()}}};
    case 5:
        return {{QStringLiteral("installPackage"), {m_chance.pick(BadPackages)}}};
    case 6:
    case 7:
        return {{QStringLiteral("installPackage"), {StormFiles::anyBundle(&m_chance)}}};
    case 8:
        return {saveCall(m_chance.below(10) - 1, id(), attributes(false))};
    case 9:
    case 10:
    case 11:
    case 12:
        return {edit(id(), false)};
    case 13:
    case 14:
    case 15:
        return requestWithEdit();
    default:
        return {request()};
    }
}

QList<StormCall> StormCalls::agreeing()
{
    const int theme = m_chance.below(m_themeIds.size());
    const StormCall request = setTheme(m_files.themes().at(theme));
    switch (m_chance.below(10)) {
    case 0:
        return {request};
    case 1:
        return {{QStringLiteral("createMoodset"), {fileUrl(m_chance.pick(m_files.creations()))}}};
    case 2:
        return {{QStringLiteral("installPackage"), {StormFiles::lastingBundle()}}};
    case 3:
        return {{QStringLiteral("refreshMoodsets"), {}}};
    case 4:
        return {malformed()};
    case 5:
    case 6:
        return {request, edit(m_themeIds.at(theme), true)};
    default:
        return {edit(m_chance.pick(m_themeIds), true)};
    }
}

StormCall StormCalls::setTheme(const QString& path)
{
    return {QStringLiteral("setMoodset"), {fileUrl(path)}};
}

StormCall StormCalls::request()
{
    const bool makesCurrent = m_chance.isOneIn(2);
    return {makesCurrent ? QStringLiteral("setMoodset") : QStringLiteral("createMoodset"), {url()}};
}

/// An edit that overtakes what the request before it makes the daemon hear of.
QList<StormCall> StormCalls::requestWithEdit()
{
    const int theme = m_chance.below(m_themeIds.size());
    const QString requested =
        m_chance.isOneIn(2) ? fileUrl(m_files.themes().at(theme)) : remoteUrl();
    return {{QStringLiteral("setMoodset"), {requested}}, edit(m_themeIds.at(theme), false)};
}

StormCall StormCalls::edit(qint64 id, bool isOfTheme)
{
    return saveCall(MoodsetType, id, attributes(isOfTheme));
}

StormCall StormCalls::malformed()
{
    switch (m_chance.below(4)) {
    case 0:
        return {QStringLiteral("setMoodset"), {value(0), 5}, true};
    case 1:
        return {QStringLiteral("saveAttributes"), {MoodsetType}, true};
    case 2:
        return {QStringLiteral("moodsetInstalled"), {QString(), QString()}, true};
    default:
        return {QStringLiteral("remove"), {QStringLiteral("a"), QStringLiteral("b")}, true};
    }
}

QString StormCalls::url()
{
    switch (m_chance.below(6)) {
    case 0:
        return m_chance.pick(BadUrls);
    case 1:
        return remoteUrl();
    case 2:
        // A careless client makes such a URL.
        return QStringLiteral("file://") + m_files.anyPath(&m_chance);
    default:
        return fileUrl(m_files.anyPath(&m_chance));
    }
}

QString StormCalls::remoteUrl()
{
    return m_server.url(QStringLiteral("/%1").arg(m_chance.below(10))).toString();
}

qint64 StormCalls::id()
{
    static const QList<qint64> oddIds{0,
                                      -1,
                                      1,
                                      7,
                                      1000000,
                                      std::numeric_limits<qint64>::min(),
                                      std::numeric_limits<qint64>::max()};
    return m_ids.isEmpty() || m_chance.isOneIn(5) ? m_chance.pick(oddIds) : m_chance.pick(m_ids);
}

/// Attributes of a theme include its colours, which other programs are to see at once.
QVariantMap StormCalls::attributes(bool isOfTheme)
{
    QVariantMap attributes;
    for (const QString& name : ColorNames) {
        if (isOfTheme || m_chance.isOneIn(3)) {
            attributes.insert(name, color());
        }
    }
    for (int i = m_chance.below(3); i > 0; --i) {
        attributes.insert(m_chance.pick(OtherNames), value(0));
    }
    if (m_chance.isOneIn(6)) {
        attributes.insert(QStringLiteral("resources"), resources(isOfTheme));
    }
    return attributes;
}

QVariant StormCalls::color()
{
    switch (m_chance.below(12)) {
    case 0:
        return value(0);
    case 1:
        return QStringLiteral("red");
    case 2:
        return QString();
    default:
        return QStringLiteral("#%1").arg(
            quint32(m_chance.below(1 << 24)) | 0xc0000000U, 8, 16, QLatin1Char('0'));
    }
}

QVariantMap StormCalls::resources(bool isOfTheme)
{
    QVariantMap resources;
    for (const char* const name : {"ringerToneFile", "chatToneFile", "no such file"}) {
        QVariantMap resource;
        if (!m_chance.isOneIn(4)) {
            const QVariant file = isOfTheme ? fileUrl(m_chance.pick(m_files.creations())) : url();
            resource.insert(QStringLiteral("url"), m_chance.isOneIn(4) ? value(0) : file);
        }
        resources.insert(QLatin1String(name), m_chance.isOneIn(6) ? value(0) : QVariant(resource));
    }
    return resources;
}

/// A value of any type that the bus has.
QVariant StormCalls::value(int depth)
{
    constexpr int deepest = 3;
    constexpr int plainTypes = 16;
    switch (m_chance.below(depth < deepest ? plainTypes + 3 : plainTypes)) {
    case 0:
        return m_chance.below(256) - 128;
    case 1:
        return std::numeric_limits<int>::max();
    case 2:
        return std::numeric_limits<uint>::max();
    case 3:
        return std::numeric_limits<qint64>::min();
    case 4:
        return std::numeric_limits<quint64>::max();
    case 5:
        return QVariant::fromValue(static_cast<short>(m_chance.below(99)));
    case 6:
        return QVariant::fromValue(uchar(m_chance.below(99)));
    case 7:
        return std::numeric_limits<double>::quiet_NaN();
    case 8:
        return m_chance.isOneIn(2);
    case 9:
        return QString(m_chance.below(2) * 100000, QLatin1Char('x'));
    case 10:
        return QStringLiteral("#ff%1").arg(m_chance.below(1 << 24), 6, 16, QLatin1Char('0'));
    case 11:
        return QStringList{QStringLiteral("a"), QString()};
    case 12:
        return QByteArray(m_chance.below(300), '\xff');
    case 13:
        return QVariant::fromValue(QDBusObjectPath(QStringLiteral("/a/b")));
    case 14:
        return QVariant::fromValue(QDBusSignature(QStringLiteral("a{sv}")));
    case 15:
        return QVariant::fromValue(QDBusUnixFileDescriptor(STDERR_FILENO));
    case 16:
        return QVariantMap{{QStringLiteral("a"), value(depth + 1)}, {QString(), value(depth + 1)}};
    case 17:
        return QVariantList{value(depth + 1), value(depth + 1)};
    default:
        return QVariant::fromValue(QDBusVariant(value(depth + 1)));
    }
}
