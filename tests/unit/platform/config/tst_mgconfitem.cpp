// SPDX-License-Identifier: BSD-3-Clause
#include "mgconfitem.h"

#include "dconfcommand.h"
#include "dconfstore.h"
#include "messagelog.h"

#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <memory>
#include <vector>

namespace {

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

// Waits until all changes up to now, by this and by other processes, are reported, and all items
// are watched. The bus keeps the order. A change before the watch of its item is found without the
// watch.
bool settle()
{
    static int count = 0;
    MGConfItem::sync();
    const MGConfItem fence(text("/test/fence"));
    QSignalSpy changes(&fence, &MGConfItem::valueChanged);
    runDconf({text("write"), text("/test/fence"), QString::number(++count)});
    return QTest::qWaitFor([&] { return fence.value() == QVariant(count) && !changes.isEmpty(); });
}

} // namespace

class MGConfItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(useSystemDefaults("[defaults]\nkey=5\nlocked='fixed'\n", "/defaults/locked\n"));
    }

    void systemDefaultIsTheValueOfAnUnsetKey()
    {
        MGConfItem item(text("/defaults/key"));
        QCOMPARE(item.value(7), QVariant(5));

        item.set(6);
        QCOMPARE(item.value(), QVariant(6));
        item.set(QVariant());

        QCOMPARE(item.value(), QVariant(5));
    }

    void settingTheSystemDefaultNotifiesNobody()
    {
        MGConfItem item(text("/defaults/key"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        item.set(5);
        QVERIFY(settle());
        item.set(QVariant());

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void lockedKeyKeepsItsValueWithOneWarning()
    {
        MessageLog log;
        MGConfItem item(text("/defaults/locked"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        item.set(text("other"));

        QVERIFY(settle());
        QCOMPARE(item.value(), QVariant(text("fixed")));
        QCOMPARE(changes.count(), 0);
        QCOMPARE(
            log.takeWarnings(),
            QStringList(text("Failed to write to the key/value store: \"/defaults/locked\" \"The "
                             "operation attempted to modify one or more non-writable keys\"")));
    }

    void readsWhatAnotherProcessWrote()
    {
        const MGConfItem item(text("/test/read"));

        runDconf({text("write"), text("/test/read"), text("{'a': <['grün']>}")});

        const QVariantMap expected{{text("a"), QStringList(text("grün"))}};
        QCOMPARE(item.value(), QVariant(expected));
    }

    void writesWhatAnotherProcessReads()
    {
        MGConfItem item(text("/test/written"));

        item.set(QStringList({text("a"), text("grün")}));
        MGConfItem::sync();

        QCOMPARE(runDconf({text("read"), text("/test/written")}), QByteArray("['a', 'grün']"));
    }

    void readsItsOwnAndItsSiblingsWritesAtOnce()
    {
        MGConfItem item(text("/test/at-once"));
        const MGConfItem sibling(text("/test/at-once"));

        item.set(5);

        QCOMPARE(item.value(), QVariant(5));
        QCOMPARE(sibling.value(), QVariant(5));
    }

    void unsetKeyReadsAsInvalidAndAsTheDefault()
    {
        const MessageLog log;
        const MGConfItem item(text("/test/unset"));

        QVERIFY(!item.value().isValid());
        QCOMPARE(item.value(540), QVariant(540));
    }

    void setKeyReadsAsItsValueDespiteADefault()
    {
        MGConfItem item(text("/test/set-with-default"));

        item.set(0);

        QCOMPARE(item.value(540), QVariant(0));
    }

    void invalidVariantClearsTheKey()
    {
        MGConfItem item(text("/test/cleared"));
        item.set(1);

        item.set(QVariant());
        MGConfItem::sync();

        QVERIFY(!item.value().isValid());
        QCOMPARE(runDconf({text("read"), text("/test/cleared")}), QByteArray());
    }

    void nullTextIsAValue()
    {
        MGConfItem item(text("/test/null-text"));

        item.set(QString());
        MGConfItem::sync();

        QCOMPARE(runDconf({text("read"), text("/test/null-text")}), QByteArray("''"));
    }

    void refusesATypeWithOneWarningAndKeepsTheValue()
    {
        MessageLog log;
        MGConfItem item(text("/test/refused"));
        item.set(1);

        item.set(QUrl(text("file:///a")));

        QCOMPARE(item.value(), QVariant(1));
        QCOMPARE(
            log.takeWarnings(),
            QStringList(text("Cannot store a value of this type: \"/test/refused\" "
                             "QVariant(QUrl, QUrl(\"file:///a\"))")));
    }

    void readsAForeignTypeAsUnsetWithOneWarning()
    {
        MessageLog log;
        const MGConfItem item(text("/test/foreign-type"));
        runDconf({text("write"), text("/test/foreign-type"), text("(1, 'a')")});

        const QVariant value = item.value(7);

        QCOMPARE(value, QVariant(7));
        QCOMPARE(
            log.takeWarnings(),
            QStringList(
                text("Cannot read the type of a stored value: \"/test/foreign-type\" (is)")));
    }

    void malformedKeyIsWarnedOfOnceAndNeverSet_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("warning");
        QTest::newRow("empty") << QString() << text("\"\"");
        QTest::newRow("no slash in front") << text("test/a") << text("\"test/a\"");
        QTest::newRow("slash at the end") << text("/test/a/") << text("\"/test/a/\"");
        QTest::newRow("root") << text("/") << text("\"/\"");
        QTest::newRow("two slashes") << text("/test//a") << text("\"/test//a\"");
        QTest::newRow("NUL") << text("/test/a") + QChar::Null << text("\"/test/a\\u0000\"");
    }

    void malformedKeyIsWarnedOfOnceAndNeverSet()
    {
        QFETCH(QString, key);
        QFETCH(QString, warning);
        MessageLog log;

        MGConfItem item(key);
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);
        item.set(1);
        MGConfItem::sync();

        QVERIFY(!item.value().isValid());
        QCOMPARE(item.value(2), QVariant(2));
        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
        QCOMPARE(runDconf({text("read"), text("/test/a")}), QByteArray());
        QCOMPARE(
            log.takeWarnings(), QStringList(text("Not a key of the key/value store: ") + warning));
    }

    void oddKeysThatAreWellFormedWork_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("one part") << text("/k");
        QTest::newRow("dots") << text("/test/a.b..c");
        QTest::newRow("blank") << text("/test/a b");
        QTest::newRow("not ASCII") << text("/test/grün");
        QTest::newRow("quotes") << text("/test/a'b''c");
        QTest::newRow("backslash and comma") << text("/test/a\\,b='");
    }

    void oddKeysThatAreWellFormedWork()
    {
        QFETCH(QString, key);
        MGConfItem item(key);
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);
        QVERIFY(settle());

        runDconf({text("write"), key, text("1")});
        QTRY_COMPARE(changes.count(), 1);
        item.set(2);
        MGConfItem::sync();

        QCOMPARE(runDconf({text("read"), key}), QByteArray("2"));
    }

    void ownWriteNotifiesEachItemOnceFromTheEventLoop()
    {
        MGConfItem item(text("/test/own"));
        const MGConfItem sibling(text("/test/own"));
        const QSignalSpy itemChanges(&item, &MGConfItem::valueChanged);
        const QSignalSpy siblingChanges(&sibling, &MGConfItem::valueChanged);

        item.set(1);
        QCOMPARE(itemChanges.count(), 0);
        QCOMPARE(siblingChanges.count(), 0);

        QVERIFY(settle());
        QCOMPARE(itemChanges.count(), 1);
        QCOMPARE(siblingChanges.count(), 1);
    }

    void writeOfAnItemThatIsGoneStillNotifies()
    {
        const MGConfItem follower(text("/test/gone"));
        const QSignalSpy changes(&follower, &MGConfItem::valueChanged);

        MGConfItem(text("/test/gone")).set(1);

        QVERIFY(settle());
        QCOMPARE(changes.count(), 1);
        QCOMPARE(follower.value(), QVariant(1));
    }

    void foreignWriteNotifiesEachItemOnce()
    {
        const MGConfItem item(text("/test/foreign"));
        const MGConfItem sibling(text("/test/foreign"));
        const QSignalSpy itemChanges(&item, &MGConfItem::valueChanged);
        const QSignalSpy siblingChanges(&sibling, &MGConfItem::valueChanged);

        runDconf({text("write"), text("/test/foreign"), text("'x'")});
        QCOMPARE(itemChanges.count(), 0);

        QVERIFY(settle());
        QCOMPARE(itemChanges.count(), 1);
        QCOMPARE(siblingChanges.count(), 1);
        QCOMPARE(item.value(), QVariant(text("x")));
    }

    void eachOwnChangeOfOneTurnNotifies()
    {
        MGConfItem item(text("/test/each"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        item.set(1);
        item.set(2);
        item.set(1);

        QVERIFY(settle());
        QCOMPARE(changes.count(), 3);
    }

    void ownWriteOfTheSameValueNotifiesNobody()
    {
        MGConfItem item(text("/test/own-same"));
        item.set(text("x"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        item.set(text("x"));

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void foreignWriteOfTheSameValueNotifiesNobody()
    {
        MGConfItem item(text("/test/foreign-same"));
        item.set(text("x"));
        MGConfItem::sync();
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        runDconf({text("write"), text("/test/foreign-same"), text("'x'")});

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void sameTextOfAnotherTypeIsAChange()
    {
        MGConfItem item(text("/test/other-type"));
        item.set(1);
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        item.set(text("1"));

        QVERIFY(settle());
        QCOMPARE(changes.count(), 1);
    }

    void changesOfOtherKeysNotifyNobody_data()
    {
        QTest::addColumn<QString>("other");
        QTest::newRow("longer name") << text("/test/others/keys");
        QTest::newRow("shorter name") << text("/test/others/k");
        QTest::newRow("below") << text("/test/others/key/a");
        QTest::newRow("above") << text("/test/others");
    }

    void changesOfOtherKeysNotifyNobody()
    {
        QFETCH(QString, other);
        const MGConfItem item(text("/test/others/key"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        MGConfItem(other).set(text(QTest::currentDataTag()));
        runDconf({text("write"), other, text("'foreign'")});

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void pathsTouchTheKeyThatTheyAreOrThatIsBelowThem_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<bool>("touches");
        QTest::newRow("the key") << QByteArray("/test/paths/key") << true;
        QTest::newRow("its directory") << QByteArray("/test/paths/") << true;
        QTest::newRow("everything") << QByteArray("/") << true;
        QTest::newRow("shorter name") << QByteArray("/test/paths/k") << false;
        QTest::newRow("longer name") << QByteArray("/test/paths/keys") << false;
        QTest::newRow("directory of its name") << QByteArray("/test/paths/key/") << false;
        QTest::newRow("another directory") << QByteArray("/test/path/") << false;
    }

    void pathsTouchTheKeyThatTheyAreOrThatIsBelowThem()
    {
        QFETCH(QByteArray, path);
        QFETCH(bool, touches);

        QCOMPARE(touchesKey(path, "/test/paths/key"), touches);
    }

    void resetOfADirectoryNotifiesTheKeysThatHadAValue_data()
    {
        QTest::addColumn<QString>("directory");
        QTest::newRow("the key's") << text("/reset/dir/");
        QTest::newRow("above") << text("/reset/");
        QTest::newRow("root") << text("/");
    }

    void resetOfADirectoryNotifiesTheKeysThatHadAValue()
    {
        QFETCH(QString, directory);
        MGConfItem item(text("/reset/dir/key"));
        item.set(1);
        MGConfItem::sync();
        const MGConfItem unset(text("/reset/dir/unset"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);
        const QSignalSpy unsetChanges(&unset, &MGConfItem::valueChanged);
        QVERIFY(settle());

        runDconf({text("reset"), text("-f"), directory});

        QVERIFY(settle());
        QCOMPARE(changes.count(), 1);
        QCOMPARE(unsetChanges.count(), 0);
        QVERIFY(!item.value().isValid());
    }

    void severalKeysLoadedAtOnceNotifyEach()
    {
        const MGConfItem first(text("/load/a"));
        const MGConfItem second(text("/load/dir/b"));
        const QSignalSpy firstChanges(&first, &MGConfItem::valueChanged);
        const QSignalSpy secondChanges(&second, &MGConfItem::valueChanged);

        QProcess process;
        process.start(text("dconf"), {text("load"), text("/load/")});
        process.write("[/]\na=1\n[dir]\nb=2\n");
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());

        QVERIFY(settle());
        QCOMPARE(firstChanges.count(), 1);
        QCOMPARE(secondChanges.count(), 1);
    }

    void manyItemsOfOneKeyAreAllNotifiedOnce()
    {
        std::vector<std::unique_ptr<MGConfItem>> items;
        std::vector<int> counts(500, 0);
        for (int& count : counts) {
            items.push_back(std::make_unique<MGConfItem>(text("/test/many")));
            connect(items.back().get(), &MGConfItem::valueChanged, this, [&count] { ++count; });
        }

        items.front()->set(1);

        QVERIFY(settle());
        QCOMPARE(counts, std::vector<int>(500, 1));
    }

    void itemsMayBeDestroyedDuringNotification()
    {
        auto first = std::make_unique<MGConfItem>(text("/test/destroyed"));
        auto second = std::make_unique<MGConfItem>(text("/test/destroyed"));
        auto third = std::make_unique<MGConfItem>(text("/test/destroyed"));
        const QSignalSpy thirdChanges(third.get(), &MGConfItem::valueChanged);
        int notified = 0;
        const auto destroyBoth = [&] {
            ++notified;
            first.reset();
            second.reset();
        };
        connect(first.get(), &MGConfItem::valueChanged, this, destroyBoth);
        connect(second.get(), &MGConfItem::valueChanged, this, destroyBoth);

        third->set(1);

        QVERIFY(settle());
        QCOMPARE(notified, 1);
        QCOMPARE(thirdChanges.count(), 1);
    }

    void itemDestroyedAfterAWriteIsNotNotified()
    {
        auto item = std::make_unique<MGConfItem>(text("/test/destroyed-early"));
        const QSignalSpy changes(item.get(), &MGConfItem::valueChanged);

        item->set(1);
        item.reset();

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void writeInsideANotificationNotifiesFromTheEventLoop()
    {
        MGConfItem item(text("/test/nested"));
        int depth = 0;
        QList<int> values;
        connect(&item, &MGConfItem::valueChanged, this, [&] {
            QCOMPARE(depth, 0);
            ++depth;
            values.append(item.value().toInt());
            if (values.last() < 3) {
                item.set(values.last() + 1);
            }
            --depth;
        });

        runDconf({text("write"), text("/test/nested"), text("1")});

        QTRY_COMPARE(values, QList<int>({1, 2, 3}));
        QVERIFY(settle());
        QCOMPARE(values.size(), 3);
    }

    void writeThatIsUnderWayWhenAnItemIsFollowedDoesNotNotifyIt()
    {
        MGConfItem(text("/test/under-way")).set(1);
        MGConfItem(text("/test/under-way-too")).set(1);

        const MGConfItem item(text("/test/under-way"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        QVERIFY(settle());
        QCOMPARE(changes.count(), 0);
    }

    void watchIsAnnouncedOnceItIsSettled()
    {
        DconfStore& store = DconfStore::instance();
        const QSignalSpy changes(&store, &DconfStore::changed);

        store.watch("/test/settled");
        QCOMPARE(changes.count(), 0);

        QVERIFY(settle());
        QCOMPARE(changes.count({QByteArray("/test/settled")}), 1);
        store.unwatch("/test/settled");
    }

    void itemsThatAreGoneCostNoBusTraffic()
    {
        const QSignalSpy changes(&DconfStore::instance(), &DconfStore::changed);
        const QVariantList change{QByteArray("/test/unwatched")};
        {
            const MGConfItem item(text("/test/unwatched"));
            const QSignalSpy itemChanges(&item, &MGConfItem::valueChanged);
            QVERIFY(settle());
            const int settled = changes.count(change);
            runDconf({text("write"), text("/test/unwatched"), text("1")});
            QVERIFY(settle());
            QCOMPARE(changes.count(change), settled + 1);
        }
        const int before = changes.count(change);

        runDconf({text("write"), text("/test/unwatched"), text("2")});

        QVERIFY(settle());
        QCOMPARE(changes.count(change), before);
    }

    void itemsThatNobodyListensToCostNoBusTraffic()
    {
        const QSignalSpy changes(&DconfStore::instance(), &DconfStore::changed);
        const MGConfItem item(text("/test/unheard"));
        const QSignalSpy destructions(&item, &QObject::destroyed);
        QVERIFY(settle());

        runDconf({text("write"), text("/test/unheard"), text("1")});

        QVERIFY(settle());
        QVERIFY(!changes.contains(QVariantList{QByteArray("/test/unheard")}));
    }

    void itemFollowedAgainByAnotherIsNotified()
    {
        {
            const MGConfItem former(text("/test/again"));
            const QSignalSpy changes(&former, &MGConfItem::valueChanged);
        }
        const MGConfItem item(text("/test/again"));
        const QSignalSpy changes(&item, &MGConfItem::valueChanged);

        runDconf({text("write"), text("/test/again"), text("1")});

        QTRY_COMPARE(changes.count(), 1);
    }

    void anotherProcessIsNotified()
    {
        QProcess watcher;
        watcher.start(text("dconf"), {text("watch"), text("/test/watched")});
        QByteArray output;
        MGConfItem item(text("/test/watched"));

        // The command does not say when its watch is active.
        int value = 0;
        QTRY_VERIFY((item.set(++value), output += watcher.readAll(), output.endsWith("\n\n")));
        watcher.kill();
        QVERIFY(watcher.waitForFinished());

        QVERIFY2(output.startsWith("/test/watched\n  "), output.constData());
    }
};

QTEST_GUILESS_MAIN(MGConfItemTest)

#include "tst_mgconfitem.moc"
