// SPDX-License-Identifier: BSD-3-Clause
// The minimum of work that registering installed bundles takes, for comparison with the daemon.
//
// bundlefloor DATABASE
//
// Reads the paths of install directories from the standard input, one in a line. For each it lists
// the bundles, reads and parses their moodset files once, writes the rows that the daemon writes,
// in as many transactions, and then says "done in N ms".
//
// It leaves out the other work of the daemon: it watches nothing, lists nothing twice, compares
// nothing with existing rows, looks for no translations, sends no announcements, writes each row
// once in its final form, and remembers a MIME type by the suffix alone.
#include "floordatabase.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVector>

#include <array>

namespace {

/// The number of moodsets that the daemon writes in one transaction.
constexpr int BatchSize = 100;

constexpr int KnownEntries = 1;
constexpr int RemovalsOnly = 2;

const std::array ToneKeys{QLatin1String("ringerToneFile"),    QLatin1String("messageToneFile"),
                          QLatin1String("mailToneFile"),      QLatin1String("internetCallToneFile"),
                          QLatin1String("chatToneFile"),      QLatin1String("calendarToneFile"),
                          QLatin1String("clockAlarmToneFile")};

struct Directory
{
    qint64 id;
    QString path;
};

/// A moodset file with a `file` row and no `moodset` row yet.
struct Moodset
{
    qint64 id;
    QString directory;
    QJsonObject object;
};

class Floor
{
public:
    explicit Floor(const QSqlDatabase& database)
        : m_database(database)
        , m_rows(database)
        , m_moodsetInsert(prepared(
              database,
              QStringLiteral(
                  "INSERT INTO moodset (fileId, favorite, homeWallpaper, highlightColor, "
                  "secondaryHighlightColor, primaryColor, secondaryColor, timestamp, ringerVolume, "
                  "enabledSounds, partnerSpace, version) "
                  "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?);")))
        , m_resourceInsert(prepared(
              database,
              QStringLiteral(
                  "INSERT INTO resource (fileId, resourceType, resourceId) VALUES (?, ?, ?);")))
    {
    }

    void index(const QString& root)
    {
        for (const Directory& package : insertPackages(root)) {
            readPackage(package);
            if (m_moodsets.size() == BatchSize) {
                writeMoodsets();
            }
        }
        writeMoodsets();
    }

private:
    QVector<Directory> insertPackages(const QString& root)
    {
        const qint64 rootId = m_rows.insertDirectory(QVariant(), root, KnownEntries);
        QVector<Directory> packages;
        m_database.transaction();
        QDirIterator iterator(root, QDir::Dirs | QDir::NoDot | QDir::NoDotDot);
        while (iterator.hasNext()) {
            const QString path = iterator.next();
            packages.append({m_rows.insertDirectory(rootId, path, RemovalsOnly), path});
        }
        m_database.commit();
        return packages;
    }

    void readPackage(const Directory& package)
    {
        constexpr int permissions = 1;
        m_database.transaction();
        QDirIterator iterator(package.path, QDir::Files);
        while (iterator.hasNext()) {
            QFile file(iterator.next());
            if (!file.open(QIODevice::ReadOnly)) {
                continue;
            }
            const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
            const qint64 id = m_rows.insertFile(
                package.id, iterator.fileInfo(), QStringLiteral("application/x-zavro-moodset"),
                permissions, true, object.value(QLatin1String("displayName")).toString());
            m_moodsets.append({id, package.path, object});
        }
        m_database.commit();
    }

    /// Writes one transaction for each tone, and one for all moodsets that wait.
    void writeMoodsets()
    {
        struct Resource
        {
            qint64 id;
            QLatin1String type;
            qint64 fileId;
        };
        QVector<Resource> resources;
        QVector<int> masks;
        for (const Moodset& moodset : qAsConst(m_moodsets)) {
            const QString folder = moodset.directory + QStringLiteral("/sounds");
            Directory sounds{0, folder};
            int mask = -1;
            for (size_t i = 0; i < ToneKeys.size(); ++i) {
                const QJsonObject tone = moodset.object.value(ToneKeys.at(i)).toObject();
                const QString name = tone.value(QLatin1String("file")).toString();
                if (tone.value(QLatin1String("enabled")).toInt(1) == 0) {
                    mask &= ~(1 << i);
                }
                if (!name.isEmpty()) {
                    resources.append({moodset.id, ToneKeys.at(i), insertTone(&sounds, name)});
                }
            }
            masks.append(mask);
        }
        m_database.transaction();
        for (int i = 0; i < m_moodsets.size(); ++i) {
            writeMoodset(m_moodsets.at(i), masks.at(i));
        }
        for (const Resource& resource : qAsConst(resources)) {
            run(m_resourceInsert, {resource.id, resource.type, resource.fileId});
        }
        m_database.commit();
        m_moodsets.clear();
    }

    qint64 insertTone(Directory* sounds, const QString& name)
    {
        constexpr int permissions = 3;
        const QFileInfo file(sounds->path + QLatin1Char('/') + name);
        m_database.transaction();
        if (sounds->id == 0) {
            sounds->id = m_rows.insertDirectory(QVariant(), sounds->path, KnownEntries);
        }
        const qint64 id =
            m_rows.insertFile(sounds->id, file, m_rows.mimeTypeName(file), permissions, false);
        m_database.commit();
        return id;
    }

    void writeMoodset(const Moodset& moodset, int mask)
    {
        const auto value = [&moodset](const char* key) {
            return moodset.object.value(QLatin1String(key));
        };
        const QString wallpaper =
            moodset.directory + QStringLiteral("/images/") + value("wallpaper").toString();
        run(m_moodsetInsert,
            {moodset.id, int(value("favorite").toBool(true)), wallpaper,
             value("highlightColor").toString(), value("secondaryHighlightColor").toString(),
             value("primaryColor").toString(), value("secondaryColors").toString(),
             value("timestamp").toString(), value("ringerVolume").toInt(), mask,
             value("partnerSpace").toString(), value("version").toInt()});
    }

    QSqlDatabase m_database;
    FloorRows m_rows;
    QSqlQuery m_moodsetInsert;
    QSqlQuery m_resourceInsert;
    /// Less than a batch.
    QVector<Moodset> m_moodsets;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Floor floor(makeFloorDatabase());
    indexFolders([&floor](const QString& folder) { floor.index(folder); });
    return EXIT_SUCCESS;
}
