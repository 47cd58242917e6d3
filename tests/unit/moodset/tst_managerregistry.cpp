// SPDX-License-Identifier: BSD-3-Clause
#include "content/contentmanager.h"
#include "content/dbmanager.h"
#include "content/downloadmanager.h"
#include "indexing/filemanager.h"
#include "indexing/imagemanager.h"
#include "indexing/indexmanager.h"
#include "messagelog.h"
#include "moodset/installmanager.h"
#include "moodset/managerfactory.h"
#include "moodset/moodsetmanager.h"

#include <QSqlQuery>
#include <QTest>

namespace {

/// A file with all its derived rows, by number.
bool insertContent(int id)
{
    QSqlQuery query(*DbManager::instance());
    const QString file = QString::number(id);
    return query.exec(QStringLiteral("INSERT INTO file (id, directoryId, mimeType, permissions, "
                                     "metadataCurrent) VALUES (%1, 1, 'image/png', 3, 1)")
                          .arg(file))
        && query.exec(QStringLiteral("INSERT INTO image (fileId) VALUES (%1)").arg(file))
        && query.exec(QStringLiteral("INSERT INTO download (fileId) VALUES (%1)").arg(file));
}

/// How many rows a file has in all tables.
int rowCount(int id)
{
    QSqlQuery query(*DbManager::instance());
    query.exec(QStringLiteral("SELECT (SELECT count(*) FROM file WHERE id = %1) "
                              "+ (SELECT count(*) FROM image WHERE fileId = %1) "
                              "+ (SELECT count(*) FROM download WHERE fileId = %1)")
                   .arg(id));
    return query.next() ? query.value(0).toInt() : -1;
}

} // namespace

class ManagerRegistryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // This is the first test, because managers stay once they are made.
    void thereAreNoManagersWithoutAFactory()
    {
        MessageLog log;

        for (int type = MoodsetContent::File; type <= MoodsetContent::Index; ++type) {
            QVERIFY(!ContentManager::managerFromType(type));
        }

        ContentManager::setFactory(makeManager);
    }

    void numberWithoutAManagerGivesNullEveryTime_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("3") << 3;
        QTest::newRow("5") << 5;
        QTest::newRow("above the highest") << 8;
        QTest::newRow("far above") << 99;
        QTest::newRow("negative") << -1;
    }

    void numberWithoutAManagerGivesNullEveryTime()
    {
        QFETCH(int, type);
        MessageLog log;

        QVERIFY(!ContentManager::managerFromType(type));
        QVERIFY(!ContentManager::managerFromType(type));
    }

    void managerIsOfItsTypesClass()
    {
        MessageLog log;

        QVERIFY(dynamic_cast<FileManager*>(ContentManager::managerFromType(0)));
        QVERIFY(dynamic_cast<MoodsetManager*>(ContentManager::managerFromType(1)));
        QVERIFY(dynamic_cast<ImageManager*>(ContentManager::managerFromType(2)));
        QVERIFY(dynamic_cast<DownloadManager*>(ContentManager::managerFromType(4)));
        QVERIFY(dynamic_cast<InstallManager*>(ContentManager::managerFromType(6)));
        QVERIFY(dynamic_cast<IndexManager*>(ContentManager::managerFromType(7)));
    }

    void classGivesTheManagerOfItsType()
    {
        MessageLog log;

        // The addresses differ, because the classes have other bases, too.
        QCOMPARE(FileManager::fromRegistry(), ContentManager::managerFromType(0));
        QCOMPARE(MoodsetManager::fromRegistry(), ContentManager::managerFromType(1));
        QCOMPARE(DownloadManager::fromRegistry(), ContentManager::managerFromType(4));
        QCOMPARE(InstallManager::fromRegistry(), ContentManager::managerFromType(6));
    }

    void managerIsMadeOnce_data() { types(); }
    void managerIsMadeOnce()
    {
        QFETCH(int, type);
        MessageLog log;

        ContentManager* const first = ContentManager::managerFromType(type);

        QVERIFY(first);
        QCOMPARE(ContentManager::managerFromType(type), first);
    }

    void registryOfTheDatabaseHoldsTheManager_data() { types(); }
    void registryOfTheDatabaseHoldsTheManager()
    {
        QFETCH(int, type);
        MessageLog log;

        ContentManager* const manager = ContentManager::managerFromType(type);

        QCOMPARE(DbManager::instance()->manager(static_cast<MoodsetContent::Type>(type)), manager);
    }

    void imagesAloneAreReadAfterAScan()
    {
        MessageLog log;

        const QList<ContentManager*> managers = ContentManager::scannerManagers();

        QCOMPARE(managers, QList<ContentManager*>({ContentManager::managerFromType(2)}));
    }

    void removalThatAManagerDoesNotKnowChangesNothing_data() { types(); }
    void removalThatAManagerDoesNotKnowChangesNothing()
    {
        QFETCH(int, type);
        MessageLog log;
        const int id = 100 + type;
        QVERIFY(insertContent(id));

        QVERIFY(!ContentManager::managerFromType(type)->remove(id));

        QCOMPARE(rowCount(id), 3);
    }

private:
    static void types()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("files") << 0;
        QTest::newRow("images") << 2;
        QTest::newRow("downloads") << 4;
    }
};

QTEST_GUILESS_MAIN(ManagerRegistryTest)

#include "tst_managerregistry.moc"
