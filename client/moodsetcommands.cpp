// SPDX-License-Identifier: BSD-3-Clause
#include "moodsetcommands.h"

#include "commands.h"
#include "filewait.h"
#include "library.h"
#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "moodsettable.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <QUrl>

#include <cstdio>
#include <cstdlib>
#include <mgconfitem.h>
#include <unistd.h>

namespace {

/// What was looked for, or why there is none, in one line.
template <typename Value>
struct Found
{
    Value value;
    QString fault;
};

QString activeFile()
{
    return MGConfItem(QStringLiteral("/desktop/zavro/theme/active_moodset")).value().toString();
}

// Colours in a terminal can be turned off by the variable that other programs heed as well.
ColorStyle colorStyle()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR")
        ? ColorStyle::Swatches
        : ColorStyle::Text;
}

// How a command ends that has come to reason, which is empty if all is well.
int end(const QString& reason)
{
    return reason.isEmpty() ? EXIT_SUCCESS : fail(reason);
}

QString about(const QString& subject, const QString& fault)
{
    return fault.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(subject, fault);
}

bool isUrl(const QString& text)
{
    return text.startsWith(QLatin1String("file:")) || text.contains(QLatin1String("://"));
}

Found<QUrl> fileUrl(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return {{}, QStringLiteral("no such file")};
    }
    if (!info.isFile()) {
        return {{}, QStringLiteral("not a file")};
    }
    if (!info.isReadable()) {
        return {{}, QStringLiteral("no right to read it")};
    }
    return {QUrl::fromLocalFile(QDir::cleanPath(info.absoluteFilePath())), {}};
}

// What a path or a URL names.
Found<QUrl> sourceUrl(const QString& source)
{
    if (!isUrl(source)) {
        return fileUrl(source);
    }
    const QUrl url(source);
    if (!url.isValid()) {
        return {{}, QStringLiteral("not a URL")};
    }
    return url.isLocalFile() ? fileUrl(url.toLocalFile()) : Found<QUrl>{url, {}};
}

// The one moodset that a user means by text.
Found<Moodset> namedMoodset(const QString& text)
{
    MoodsetLibrary library;
    const QVector<Moodset> moodsets = library.find(text);
    if (!library.error().isEmpty()) {
        return {{}, library.error()};
    }
    if (moodsets.isEmpty()) {
        return {{}, QStringLiteral("no moodset has this id or name")};
    }
    if (moodsets.size() > 1) {
        return {{}, QStringLiteral("%1 moodsets have this name; give an id").arg(moodsets.size())};
    }
    return {moodsets.constFirst(), {}};
}

QString seeLog(const QString& fault)
{
    return fault + QStringLiteral("; its log tells why");
}

QString setFault(const MoodsetService& service, const QUrl& url)
{
    QString fault = service.setMoodset(url);
    if (!fault.isEmpty() || !url.isLocalFile() || activeFile() == url.toLocalFile()) {
        return fault;
    }
    return seeLog(QStringLiteral("the daemon has not made it active"));
}

// Why there is no moodset of a local file.
QString absenceFault(const QUrl& url)
{
    MoodsetLibrary library;
    if (library.moodset(url) || !library.error().isEmpty()) {
        return library.error();
    }
    return seeLog(QStringLiteral("the daemon has not made a moodset of it"));
}

QString creationFault(const MoodsetService& service, const QUrl& url)
{
    const QString fault = service.createMoodset(url);
    return fault.isEmpty() && url.isLocalFile() ? absenceFault(url) : fault;
}

QString favoriteFault(const MoodsetService& service, qint64 id, bool favorite)
{
    QString fault = service.saveMoodset(id, {{QStringLiteral("favorite"), favorite}});
    if (!fault.isEmpty()) {
        return fault;
    }
    MoodsetLibrary library;
    const Moodset moodset = library.moodset(id);
    if ((moodset && moodset->favorite == favorite) || !library.error().isEmpty()) {
        return library.error();
    }
    return seeLog(QStringLiteral("the daemon has not changed it"));
}

QString removalFault(const MoodsetService& service, qint64 id)
{
    QString fault = service.removeMoodset(id);
    if (!fault.isEmpty()) {
        return fault;
    }
    MoodsetLibrary library;
    if (!library.moodset(id) || !library.error().isEmpty()) {
        return library.error();
    }
    return seeLog(QStringLiteral("the daemon has not removed it"));
}

// Waits for the data of a moodset or index file, and returns why there are none.
QString packageFileFault(const MoodsetService& service, const Library& files, const QString& path)
{
    const QString fault = waitForFile(service, files, path);
    return fault.isEmpty() && path.endsWith(QLatin1String(".moodset"))
        ? absenceFault(QUrl::fromLocalFile(path))
        : fault;
}

QString packageFault(const MoodsetService& service, const QDir& package, const QStringList& files)
{
    Library library;
    if (!library.open()) {
        return library.error();
    }
    QString fault = service.installPackage(package.path());
    for (const QString& file : files) {
        if (fault.isEmpty()) {
            fault = about(file, packageFileFault(service, library, package.filePath(file)));
        }
    }
    return fault;
}

} // namespace

int showMoodsets()
{
    MoodsetLibrary library;
    const QVector<Moodset> moodsets = library.moodsets();
    if (!library.error().isEmpty()) {
        return fail(library.error());
    }
    QTextStream(stdout) << moodsetTable(moodsets, activeFile(), colorStyle());
    return EXIT_SUCCESS;
}

int setMoodset(const QString& source)
{
    const MoodsetService service;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    Found<QUrl> url = sourceUrl(source);
    if (!url.fault.isEmpty() && !isUrl(source) && !QFileInfo::exists(source)) {
        const Found<Moodset> moodset = namedMoodset(source);
        if (moodset.value) {
            url = {moodset.value->url, {}};
        } else {
            url.fault += QStringLiteral(", and ") + moodset.fault;
        }
    }
    return end(about(source, url.fault.isEmpty() ? setFault(service, url.value) : url.fault));
}

int createMoodset(const QString& picture)
{
    const MoodsetService service;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    const Found<QUrl> url = sourceUrl(picture);
    return end(about(picture, url.fault.isEmpty() ? creationFault(service, url.value) : url.fault));
}

int setFavorite(const QString& moodset, bool favorite)
{
    const MoodsetService service;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    const Found<Moodset> found = namedMoodset(moodset);
    return end(about(
        moodset, found.value ? favoriteFault(service, found.value->id, favorite) : found.fault));
}

int removeMoodset(const QString& moodset)
{
    const MoodsetService service;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    const Found<Moodset> found = namedMoodset(moodset);
    return end(about(moodset, found.value ? removalFault(service, found.value->id) : found.fault));
}

int installPackage(const QString& folder)
{
    const MoodsetService service;
    if (!service.isRunning()) {
        return failNotRunning();
    }
    // Without a slash at its end, which would make it another folder to the daemon.
    const QDir package(QDir::cleanPath(QFileInfo(folder).absoluteFilePath()));
    if (!package.exists()) {
        return fail(about(folder, QStringLiteral("no such folder")));
    }
    const QStringList files = package.entryList(
        {QStringLiteral("*.moodset"), QStringLiteral("*.index")},
        QDir::Files | QDir::CaseSensitive);
    if (files.isEmpty()) {
        return fail(about(folder, QStringLiteral("no file of a moodset and no index in it")));
    }
    return end(about(folder, packageFault(service, package, files)));
}

int refreshMoodsets()
{
    const MoodsetService service;
    return service.isRunning() ? end(service.refreshMoodsets()) : failNotRunning();
}
