// SPDX-License-Identifier: BSD-3-Clause
#include "favoriteorder.h"

#include "moodsetedit.h"
#include "moodsetlibrary.h"
#include "moodsetservice.h"
#include "subject.h"

#include <QDateTime>
#include <QHash>
#include <QThread>

#include <algorithm>
#include <moodsetnames.h>

namespace {

constexpr qint64 MsPerSecond = 1000;

struct Favorite
{
    qint64 id = 0;
    QString file;
    QDateTime since;
};

/// Those of the files that are favourites, in the order of the library.
QVector<Favorite> listedFavorites(const QStringList& files, QString* fault)
{
    MoodsetLibrary library;
    QVector<Favorite> favorites;
    for (const Moodset& moodset : library.moodsets()) {
        const QString file = moodset->url.toLocalFile();
        if (moodset->favorite && files.contains(file)) {
            favorites.append({moodset->id, file, moodset->timestamp});
        }
    }
    *fault = library.error();
    return favorites;
}

QVector<Favorite> sorted(QVector<Favorite> favorites, const QStringList& files)
{
    QHash<QString, int> places;
    for (const QString& file : files) {
        places.insert(file, places.size());
    }
    std::sort(favorites.begin(), favorites.end(), [&places](const Favorite& a, const Favorite& b) {
        return places.value(a.file) < places.value(b.file);
    });
    return favorites;
}

void awaitNextSecond()
{
    QThread::msleep(static_cast<unsigned long>(
        MsPerSecond - QDateTime::currentMSecsSinceEpoch() % MsPerSecond));
}

QString makeLatest(const MoodsetService& service, const Favorite& favorite)
{
    for (const bool isFavorite : {false, true}) {
        const QString fault = MoodsetEdit::save(
            service, favorite.id, {{MoodsetNames::Attribute::Favorite, isFavorite}});
        if (!fault.isEmpty()) {
            return about(favorite.file, fault);
        }
    }
    return {};
}

} // namespace

QString orderFavorites(const MoodsetService& service, const QStringList& files)
{
    QString fault;
    const QVector<Favorite> listed = listedFavorites(files, &fault);
    const QVector<Favorite> wanted = sorted(listed, files);
    const auto* next = std::mismatch(
                           wanted.cbegin(), wanted.cend(), listed.cbegin(),
                           [](const Favorite& a, const Favorite& b) { return a.id == b.id; })
                           .first;
    if (next == wanted.cend()) {
        return fault;
    }
    // A bundle can name a time in the future. A favourite that is switched on now would be listed
    // on the wrong side of it.
    next = std::min(
        next,
        std::find_if(
            wanted.cbegin(), wanted.cend(), [now = QDateTime::currentDateTimeUtc()](auto& moodset) {
                return moodset.since >= now.addSecs(-1);
            }));
    const auto* last = next == wanted.cbegin() ? nullptr : next - 1;
    for (; next != wanted.cend() && fault.isEmpty(); ++next) {
        // Of two favourites from the same second, the library lists the one with the lower id
        // first.
        if (last && last->id > next->id) {
            awaitNextSecond();
        }
        fault = makeLatest(service, *next);
        last = next;
    }
    return fault;
}
