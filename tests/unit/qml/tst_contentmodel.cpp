// SPDX-License-Identifier: BSD-3-Clause
#include "batchrecorder.h"
#include "contentwriter.h"
#include "messagelog.h"
#include "moodsetitem.h"
#include "moodsetmodel.h"
#include "photomodel.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QPersistentModelIndex>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

#include <photoqueryagent.h>
#include <queryagentdatabase.h>

namespace {

QDateTime day(int number)
{
    return QDateTime(QDate(2000, 1, 1), QTime(12, 0)).addDays(number);
}

QString photoPath(int number)
{
    return QStringLiteral("/many/%1.jpg").arg(number, 5, 10, QLatin1Char('0'));
}

QStringList namesOf(const ContentModel& model)
{
    QStringList names;
    for (int row = 0; row < model.count(); ++row) {
        names.append(model.index(row).data(FileData::FileNameRole).toString());
    }
    return names;
}

/// The listing of the library, newest first.
QStringList listedNames()
{
    QueryAgentDatabase database;
    database.setDatabaseName(QueryAgentDatabase::filePath());
    database.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    if (!database.open()) {
        return {};
    }
    BatchRecorder recorder;
    PhotoQueryAgent(database).queryPage(&recorder, {});
    return recorder.fileNames();
}

bool waitUntilReady(ContentModel* model)
{
    return QTest::qWaitFor([model] { return model->status() == ContentModel::Ready; }, 20000);
}

bool refresh(ContentModel* model)
{
    QSignalSpy updated(model, &ContentModel::updated);
    model->refresh();
    return updated.wait(20000);
}

} // namespace

/// Tests models on a library that changes, and models that are destroyed at any time. Each function
/// has a library of its own.
class ContentModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_folder->path()));
    }

    void rowsAreThoseOfTheLibraryAfterAnyChange()
    {
        MessageLog log;
        ContentWriter writer(QueryAgentDatabase::filePath());
        QRandomGenerator random(20261122);
        for (int i = 0; i < 300; ++i) {
            writer.addPhoto(photoPath(i), i % 5 == 0 ? QDateTime() : day(random.bounded(1000)));
        }
        PhotoModel model;
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QSignalSpy resets(&model, &ContentModel::modelReset);
        QCOMPARE(model.status(), ContentModel::Null);
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        QCOMPARE(namesOf(model), listedNames());

        for (int round = 0; round < 30; ++round) {
            const QPersistentModelIndex kept(model.index(random.bounded(model.count())));
            const QString name = kept.data(FileData::FileNameRole).toString();
            writer.transaction();
            for (int change = 0; change < 8; ++change) {
                const int id = random.bounded(1, 400);
                switch (random.bounded(4)) {
                case 0:
                    writer.exec(QStringLiteral("DELETE FROM image WHERE fileId = ?"), {id});
                    break;
                case 1:
                    writer.exec(
                        QStringLiteral("UPDATE image SET dateTaken = ? WHERE fileId = ?"),
                        {day(random.bounded(1000)), id});
                    break;
                case 2:
                    writer.exec(
                        QStringLiteral("UPDATE image SET orientation = ? WHERE fileId = ?"),
                        {random.bounded(8), id});
                    break;
                default:
                    writer.addPhoto(
                        photoPath(1000 + 8 * round + change), day(random.bounded(1000)));
                }
            }
            writer.commit();

            QVERIFY(refresh(&model));

            QCOMPARE(namesOf(model), listedNames());
            if (kept.isValid()) {
                QCOMPARE(kept.data(FileData::FileNameRole).toString(), name);
            } else {
                QVERIFY(!listedNames().contains(name));
            }
        }
        QCOMPARE(resets.count(), 0);
    }

    void aMovedRowIsWhereItIsAnnounced()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        for (int i = 0; i < 10; ++i) {
            writer.addPhoto(photoPath(i), day(i));
        }
        PhotoModel model;
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        QStringList seen;
        connect(
            &model, &ContentModel::rowsMoved, this,
            [&](const QModelIndex& /*parent*/, int from, int /*last*/,
                const QModelIndex& /*parent*/, int before) {
                seen.append(model.index(before > from ? before - 1 : before)
                                .data(FileData::FileNameRole)
                                .toString());
            });
        writer.exec(QStringLiteral("UPDATE image SET dateTaken = ? WHERE fileId = 3"), {day(50)});
        writer.exec(QStringLiteral("UPDATE image SET dateTaken = ? WHERE fileId = 8"), {day(-5)});

        QVERIFY(refresh(&model));

        seen.sort();
        QCOMPARE(seen, QStringList({QStringLiteral("00002.jpg"), QStringLiteral("00007.jpg")}));
    }

    void manyRowsComeInPortions()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        writer.addMany(3000, [&writer](const QString& path) {
            writer.addPhoto(path, day(path.mid(6, 5).toInt()));
        });
        PhotoModel model;
        QSignalSpy inserted(&model, &ContentModel::rowsInserted);
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));

        QCOMPARE(model.count(), 3000);
        QVERIFY(inserted.count() >= 2 && inserted.count() <= 8);
        QVERIFY(inserted.constFirst().at(2).toInt() < 200);
        QCOMPARE(namesOf(model), listedNames());
    }

    void unchangedRowsAreNotAnnounced()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        writer.addMany(500, [&writer](const QString& path) { writer.addPhoto(path); });
        PhotoModel model;
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        QSignalSpy inserted(&model, &ContentModel::rowsInserted);
        QSignalSpy removed(&model, &ContentModel::rowsRemoved);
        QSignalSpy changed(&model, &ContentModel::dataChanged);

        QVERIFY(refresh(&model));

        QCOMPARE(inserted.count() + removed.count() + changed.count(), 0);
        writer.addPhoto(photoPath(501));
        QVERIFY(refresh(&model));
        QCOMPARE(inserted.count(), 1);
        QCOMPARE(model.count(), 501);
    }

    void aLibraryThatWasMadeAnewKeepsTheRowsOfItsFiles()
    {
        const QString path = QueryAgentDatabase::filePath();
        {
            ContentWriter writer(path);
            for (int i = 0; i < 10; ++i) {
                writer.addPhoto(photoPath(i), day(i));
            }
        }
        PhotoModel model;
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        const QPersistentModelIndex kept(model.index(4));
        const QString name = kept.data(FileData::FileNameRole).toString();
        for (const char* const ending : {"", "-wal", "-shm"}) {
            QFile::remove(path + QLatin1String(ending));
        }
        ContentWriter writer(path);
        for (int i = 9; i >= 0; --i) {
            writer.addPhoto(photoPath(i), day(i));
        }
        writer.addPhoto(photoPath(20), day(20));

        QVERIFY(refresh(&model));

        QCOMPARE(model.count(), 11);
        QVERIFY(kept.isValid());
        QCOMPARE(kept.data(FileData::FileNameRole).toString(), name);
        QCOMPARE(namesOf(model), listedNames());
        QCOMPARE(
            model.indexOf(model.get(5).toMap().value(QStringLiteral("contentId")).toLongLong()), 5);
    }

    void anotherQueryInTheMiddleOfAnUpdateIsServed()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        for (int i = 0; i < 300; ++i) {
            writer.addPhoto(photoPath(i), day(i));
        }
        PhotoModel model;
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        writer.exec(QStringLiteral("DELETE FROM image WHERE fileId % 10 = 0"));
        int steps = 0;
        const auto searchSomethingElse = [&model, &steps] {
            ++steps;
            model.setSearch(QStringLiteral("0000%1.jpg").arg(steps % 10));
        };
        connect(&model, &ContentModel::rowsAboutToBeRemoved, this, searchSomethingElse);
        connect(&model, &ContentModel::rowsRemoved, this, searchSomethingElse);

        model.refresh();

        QTRY_VERIFY(steps > 20);
        model.disconnect(this);
        model.setSearch(QStringLiteral("00001.jpg"));
        QTRY_COMPARE(namesOf(model), QStringList{QStringLiteral("00001.jpg")});
        model.setSearch(QString());
        QTRY_COMPARE(namesOf(model), listedNames());
    }

    void aBrokenLibraryIsAnErrorAndKeepsTheRows()
    {
        MessageLog log;
        const QString path = QueryAgentDatabase::filePath();
        ContentWriter writer(path);
        writer.addPhoto(photoPath(1), day(1));
        PhotoModel model;
        model.componentComplete();
        QVERIFY(waitUntilReady(&model));
        writer.exec(QStringLiteral("DROP TABLE image"));

        model.refresh();

        QTRY_COMPARE(model.status(), ContentModel::Error);
        QVERIFY(!model.error().isEmpty());
        QCOMPARE(model.count(), 1);
        QVERIFY(!log.takeWarnings().isEmpty());
    }

    void modelsMayEndWhileTheyRead()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        writer.addMany(5000, [&writer](const QString& path) { writer.addPhoto(path, day(1)); });
        writer.addMoodset(QStringLiteral("/m/a.moodset"));
        QRandomGenerator random(20261122);
        for (int round = 0; round < 20; ++round) {
            std::vector<std::unique_ptr<QObject>> objects;
            for (int i = 0; i < 8; ++i) {
                if (i % 4 == 3) {
                    auto item = std::make_unique<MoodsetItem>();
                    item->setUrl(QUrl(QStringLiteral("file:///m/a.moodset")));
                    item->componentComplete();
                    objects.push_back(std::move(item));
                    continue;
                }
                auto model = std::make_unique<PhotoModel>();
                model->componentComplete();
                model->setSearch(QString::number(random.bounded(100)));
                objects.push_back(std::move(model));
            }
            QTest::qWait(random.bounded(10));
        }
    }

    void anEngineMayEndWhileItsModelsRead()
    {
        ContentWriter writer(QueryAgentDatabase::filePath());
        writer.addMany(5000, [&writer](const QString& path) { writer.addPhoto(path, day(1)); });
        for (int round = 0; round < 5; ++round) {
            auto engine = std::make_unique<QQmlEngine>();
            engine->addImportPath(QStringLiteral(MOODSET_QML_DIR));
            QQmlComponent component(engine.get());
            component.setData(
                "import QtQml 2.15\nimport Moodset 1.0\n"
                "QtObject { property list<QtObject> all: [PhotoModel {}, MoodsetModel {}, "
                "FileModel "
                "{}]\nproperty string name: Theme.activeName\n"
                "Component.onCompleted: Actions.remove(1) }",
                {});
            const std::unique_ptr<QObject> object(component.create());
            QVERIFY2(object, qPrintable(component.errorString()));
            QTest::qWait(round);
            if (round % 2 == 0) {
                engine.reset();
            }
        }
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(ContentModelTest)

#include "tst_contentmodel.moc"
