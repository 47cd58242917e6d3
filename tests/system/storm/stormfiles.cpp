// SPDX-License-Identifier: BSD-3-Clause
#include "stormfiles.h"

#include "encodedpicture.h"
#include "hostilepicture.h"
#include "installedbundles.h"
#include "userfolders.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdio>

namespace {

constexpr int BundleCount = 4;

const QString LastFile = QStringLiteral("/\ufffd.png");
const QString LastFolder = QStringLiteral("/\ufffd");

/// Names that a program would not choose.
const QStringList OddNames{QStringLiteral("a b.png"),     QStringLiteral("%41.png"),
                           QStringLiteral("#1?.jpg"),     QStringLiteral("quote'\".png"),
                           QStringLiteral("line\nb.gif"), QStringLiteral("\u00e4\u4e2d.png"),
                           QStringLiteral(".hidden.png"), QStringLiteral("-f.jpg"),
                           QStringLiteral("no suffix"),   QStringLiteral("upper.PNG")};

QByteArray picture(const QSize& size, QRgb color, const char* format)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return encodedPicture(image, format);
}

QByteArray moodsetFile(int number)
{
    return QStringLiteral(R"({"wallpaper": "w.png", "version": 2, "displayName": "Sea %1",
        "highlightColor": "#ff%2", "ringerVolume": %3, "favorite": %4,
        "ringerToneFile": {"file": "r.ogg"}, "chatToneFile": {"enabled": 0}})")
        .arg(number)
        .arg(number % 0x1000000, 6, 16, QLatin1Char('0'))
        .arg(number % 120)
        .arg(number % 2 == 0 ? QStringLiteral("true") : QStringLiteral("false"))
        .toUtf8();
}

/// Also in place of another file.
void move(const QString& from, const QString& to)
{
    std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData());
}

bool write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// Makes files of a content.
std::function<void(const QString&)> holding(const QByteArray& content)
{
    return [content](const QString& path) { write(path, content); };
}

/// The moodset file of a bundle, which has the name of its folder.
QString moodsetPath(const QString& folder)
{
    return folder + folder.mid(folder.lastIndexOf(QLatin1Char('/'))) + QStringLiteral(".moodset");
}

} // namespace

const QVector<HostileFile>& hostileFiles()
{
    static const QByteArray png = picture(QSize(50, 40), qRgb(9, 99, 199), "png");
    static const QVector<HostileFile> files{
        {QStringLiteral(".jpg"), holding({})},
        {QStringLiteral(".png"), holding("text")},
        {QStringLiteral(".jpg"), holding(png)},
        {QStringLiteral(".png"), holding(png.left(png.size() / 2))},
        {QStringLiteral(".gif"), holding(QByteArray(100000, '\0'))},
        {QStringLiteral(".moodset"), holding("{")},
        {QStringLiteral(".moodset"), holding(QByteArray(5000, '['))},
        {QStringLiteral(".moodset"), holding(R"({"wallpaper": "../w.png", "ringerVolume": {}})")},
        {QStringLiteral(".index"), holding(R"([{"file": 5}, 7, null])")},
        {QStringLiteral(".jpg"), holding(endlessAnimation())},
        {QStringLiteral(".png"), holding(nestedVectorPicture())}};
    return files;
}

StormFiles::StormFiles(const UserFolders& folders, quint32 seed)
    : m_folders(folders)
    , m_chance(seed)
    , m_pictures(
          {picture(QSize(64, 48), qRgb(200, 30, 30), "png"),
           picture(QSize(120, 90), qRgb(30, 200, 30), "jpeg"),
           picture(QSize(1, 1), qRgb(30, 30, 200), "png"),
           picture(QSize(90, 160), qRgb(200, 200, 200), "bmp")})
{
}

bool StormFiles::prepare()
{
    bool isWritten = true;
    for (const char* const name : {"", "/folder a", "/folder b", "/folder a/inner"}) {
        m_folderPaths.append(m_folders.pictures() + QLatin1String(name));
        isWritten = isWritten && makeFolder(m_folderPaths.constLast());
    }
    for (int i = 0; i < 3; ++i) {
        m_themes.append(m_folders.picture(QStringLiteral("theme %1.png").arg(i)));
        m_creations.append(m_folders.elsewhere(QStringLiteral("creation %1.png").arg(i)));
    }
    for (const QString& path : m_themes + m_creations) {
        isWritten = isWritten && write(path, m_pictures.constFirst());
    }
    m_themes.append(moodsetPath(lastingBundle()));
    return isWritten && writeBundle(lastingBundle());
}

QString StormFiles::lastingBundle()
{
    return InstalledBundles::folder() + QStringLiteral("lasting");
}

QString StormFiles::anyBundle(Chance* chance)
{
    return InstalledBundles::folder() + QStringLiteral("b%1").arg(chance->below(BundleCount));
}

QString StormFiles::anyPath(Chance* chance) const
{
    switch (chance->below(5)) {
    case 0:
        return chance->pick(m_themes);
    case 1:
        return chance->pick(m_creations);
    case 2:
        return moodsetPath(anyBundle(chance));
    default: {
        const QDir folder = m_folderPaths.at(chance->below(m_folderPaths.size()));
        const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
        return folder.filePath(chance->pick(names + QStringList{QStringLiteral("none.png")}));
    }
    }
}

QString StormFiles::anyFolder()
{
    return m_chance.pick(m_folderPaths);
}

QString StormFiles::anyWanderingFolder()
{
    return m_folders.picture(QStringLiteral("wandering %1").arg(m_chance.below(3)));
}

/// With a file and a folder in it whose names come last, so that no row comes after all there is.
bool StormFiles::makeFolder(const QString& path) const
{
    return QDir().mkpath(path + LastFolder) && write(path + LastFile, m_pictures.constFirst());
}

QString StormFiles::newName()
{
    return QStringLiteral("/%1.png").arg(++m_names);
}

QString StormFiles::oddName()
{
    return QLatin1Char('/') + m_chance.pick(OddNames);
}

void StormFiles::addPicture(const QString& path)
{
    const QByteArray content = m_chance.pick(m_pictures);
    if (m_chance.isOneIn(2)) {
        write(path, content);
        return;
    }
    const QString draft = m_folders.elsewhere(QStringLiteral("draft"));
    write(draft, content);
    move(draft, path);
}

void StormFiles::moveAnyPicture(const QString& target)
{
    const QDir folder(anyFolder());
    QStringList paths;
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString& name : names) {
        paths.append(folder.filePath(name));
    }
    paths.removeOne(folder.path() + LastFile);
    for (const QString& theme : m_themes) {
        paths.removeOne(theme);
    }
    if (!paths.isEmpty()) {
        move(m_chance.pick(paths), target);
    }
}

void StormFiles::changeInOrder()
{
    switch (m_chance.below(8)) {
    case 0:
        moveAnyPicture(m_folders.elsewhere() + newName());
        break;
    case 1:
    case 2:
        moveAnyPicture(anyFolder() + newName());
        break;
    case 3:
        if (m_chance.isOneIn(2)) {
            static_cast<void>(writeBundle(lastingBundle()));
        } else {
            write(anyFolder() + LastFile, m_chance.pick(m_pictures));
        }
        break;
    default:
        addOrRemovePicture();
    }
}

/// So that there are never many.
void StormFiles::addOrRemovePicture()
{
    constexpr int many = 30;
    const QString folder = anyFolder();
    if (QDir(folder).count() < many) {
        addPicture(folder + newName());
    } else {
        moveAnyPicture(m_folders.elsewhere(QStringLiteral("draft")));
    }
}

void StormFiles::change()
{
    switch (m_chance.below(10)) {
    case 0:
        changeFolders();
        break;
    case 1:
    case 2:
        addOddity();
        break;
    case 3:
    case 4:
        changeBundle();
        break;
    case 5:
        // It may replace another file.
        addPicture(anyFolder() + oddName());
        break;
    case 6:
        moveAnyPicture(anyFolder() + oddName());
        break;
    default:
        changeInOrder();
    }
}

/// Never one with files further down: their rows stay when that of the folder goes.
void StormFiles::changeFolders()
{
    const QString folder = anyWanderingFolder();
    const QString away = m_folders.elsewhere(QStringLiteral("away"));
    switch (m_chance.below(5)) {
    case 0:
        QDir(folder).removeRecursively();
        break;
    case 1:
        move(folder, away);
        break;
    case 2:
        move(away, folder);
        break;
    case 3:
        move(folder, anyWanderingFolder());
        break;
    default:
        static_cast<void>(makeFolder(folder));
        addPicture(folder + newName());
    }
}

void StormFiles::addOddity()
{
    if (m_chance.isOneIn(4)) {
        QFile::link(m_themes.constFirst(), anyFolder() + newName());
        return;
    }
    const HostileFile file = m_chance.pick(hostileFiles());
    file.make(anyFolder() + newName() + file.suffix);
}

void StormFiles::changeBundle()
{
    const QString folder = anyBundle(&m_chance);
    switch (m_chance.below(6)) {
    case 0:
        QDir(folder).removeRecursively();
        break;
    case 1:
        QFile::remove(moodsetPath(folder));
        m_chance.pick(hostileFiles()).make(moodsetPath(folder));
        break;
    case 2:
        QFile::remove(folder + QStringLiteral("/images/w.png"));
        break;
    default:
        static_cast<void>(writeBundle(folder));
    }
}

bool StormFiles::writeBundle(const QString& folder)
{
    const QString draft = folder + QStringLiteral("/.draft");
    const bool isWritten =
        InstalledBundles::write(folder + QStringLiteral("/images/w.png"), m_pictures.constFirst())
        && InstalledBundles::write(folder + QStringLiteral("/sounds/r.ogg"), "r")
        && InstalledBundles::write(draft, moodsetFile(m_chance.below(0x1000000)));
    move(draft, moodsetPath(folder));
    return isWritten;
}
