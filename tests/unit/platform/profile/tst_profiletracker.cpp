// SPDX-License-Identifier: BSD-3-Clause
#include "profile.h"

#include "dconfcommand.h"
#include "dconfstore.h"
#include "dconfwatch.h"
#include "mgconfitem.h"

#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr char Tone[] = "sms.alert.tone";

QByteArray line(const char* kind, const char* profile, const char* key, const char* value)
{
    return QByteArray(kind) + ' ' + profile + ' ' + key + '='
        + (value != nullptr ? QByteArray(value) : QByteArray("null"));
}

// A listener for all three kinds of changes, which records its calls.
class Recorder
{
public:
    Recorder()
    {
        profile_track_add_profile_cb(&Recorder::noteProfile, this, nullptr);
        profile_track_add_change_cb(&Recorder::noteChange, this, nullptr);
        profile_track_add_active_cb(&Recorder::noteActive, this, nullptr);
    }

    ~Recorder()
    {
        profile_track_remove_profile_cb(&Recorder::noteProfile, this);
        profile_track_remove_change_cb(&Recorder::noteChange, this);
        profile_track_remove_active_cb(&Recorder::noteActive, this);
    }

    Q_DISABLE_COPY_MOVE(Recorder)

    QByteArrayList take() { return std::exchange(m_calls, {}); }
    const QByteArrayList& calls() const { return m_calls; }

private:
    static void noteProfile(const char* profile, void* self)
    {
        static_cast<Recorder*>(self)->m_calls.append(QByteArray("profile ") + profile);
    }

    static void noteChange(
        const char* profile, const char* key, const char* value, const char* type, void* self)
    {
        QCOMPARE(type, "");
        static_cast<Recorder*>(self)->m_calls.append(line("change", profile, key, value));
    }

    static void noteActive(
        const char* profile, const char* key, const char* value, const char* type, void* self)
    {
        QCOMPARE(type, "");
        static_cast<Recorder*>(self)->m_calls.append(line("active", profile, key, value));
    }

    QByteArrayList m_calls;
};

// Makes a change in another process, after all changes of this process.
void dconf(const char* command, const char* path, const char* argument = nullptr)
{
    MGConfItem::sync();
    QStringList arguments{
        QString::fromUtf8(command),
        QStringLiteral("/com/zavro/profile/") + QString::fromUtf8(path)};
    if (argument != nullptr) {
        arguments.append(QString::fromUtf8(argument));
    }
    runDconf(arguments);
}

// Starts the tracker, and waits until its watch is active, which the store announces.
bool startTracker()
{
    const QSignalSpy changes(&DconfStore::instance(), &DconfStore::changed);
    profile_tracker_init();
    return QTest::qWaitFor(
        [&] { return changes.contains(QVariantList{QByteArray("/com/zavro/profile/")}); });
}

// Waits until all changes up to now are reported, because the bus keeps the order. The last report
// is that of a change by this function. The value alone proves nothing, because a comparison for an
// earlier change reads it, too, and the report of this change may still have to come.
bool settle(const Recorder& recorder)
{
    static int count = 0;
    const QByteArray number = QByteArray::number(++count);
    const QSignalSpy changes(&DconfStore::instance(), &DconfStore::changed);
    dconf("write", "fence/fence", ("'" + number + "'").constData());
    const bool isTold = QTest::qWaitFor([&] {
        return changes.contains(QVariantList{QByteArray("/com/zavro/profile/fence/fence")})
            && recorder.calls().contains(line("change", "fence", "fence", number));
    });
    QCoreApplication::processEvents();
    return isTold;
}

} // namespace

class ProfileTrackerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/com/")});
        QVERIFY(startTracker());
    }

    void cleanup() { profile_tracker_quit(); }

    void ownChangeOfAnInactiveProfileCallsTheChangeCallbackFromTheEventLoop()
    {
        Recorder recorder;

        profile_set_value("silent", Tone, "/a.ogg");
        QCOMPARE(recorder.calls(), QByteArrayList());

        const QByteArrayList expected{line("change", "silent", Tone, "/a.ogg")};
        QTRY_COMPARE(recorder.calls(), expected);
        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 2);
    }

    void changeOfTheActiveProfileCallsBothCallbacks()
    {
        Recorder recorder;

        profile_set_value("general", Tone, "/a.ogg");

        const QByteArrayList expected{
            line("change", "general", Tone, "/a.ogg"), line("active", "general", Tone, "/a.ogg")};
        QTRY_COMPARE(recorder.calls(), expected);
    }

    void changeOfAnotherProcessCallsBack()
    {
        Recorder recorder;

        dconf("write", "general/sms.alert.tone", "'/a.ogg'");

        const QByteArrayList expected{
            line("change", "general", Tone, "/a.ogg"), line("active", "general", Tone, "/a.ogg")};
        QTRY_COMPARE(recorder.calls(), expected);
    }

    void switchOfTheProfileCallsTheProfileCallbackAlone_data()
    {
        QTest::addColumn<QByteArray>("profile");
        QTest::newRow("known") << QByteArray("silent");
        QTest::newRow("unheard of") << QByteArray("flight");
    }

    void switchOfTheProfileCallsTheProfileCallbackAlone()
    {
        QFETCH(QByteArray, profile);
        profile_tracker_quit();
        profile_set_value("general", Tone, "/general.ogg");
        profile_set_value("silent", Tone, "/silent.ogg");
        profile_set_value("fallback", Tone, "/fallback.ogg");
        profile_tracker_init();
        Recorder recorder;

        profile_set_profile(profile.constData());

        QTRY_COMPARE(recorder.calls(), QByteArrayList({"profile " + profile}));
        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 2);
    }

    void foreignSwitchOfTheProfileCallsBack()
    {
        Recorder recorder;

        dconf("write", "active", "'silent'");
        QTRY_COMPARE(recorder.calls(), QByteArrayList({"profile silent"}));
        recorder.take();
        dconf("reset", "active");

        QTRY_COMPARE(recorder.calls(), QByteArrayList({"profile general"}));
    }

    void valueAfterASwitchIsOfTheNewActiveProfile()
    {
        Recorder recorder;

        profile_set_profile("silent");
        profile_set_value("silent", Tone, "/a.ogg");
        profile_set_value("general", Tone, "/b.ogg");

        const QByteArrayList expected{
            "profile silent", line("change", "general", Tone, "/b.ogg"),
            line("change", "silent", Tone, "/a.ogg"), line("active", "silent", Tone, "/a.ogg")};
        QTRY_COMPARE(recorder.calls(), expected);
    }

    void fallbackChangeReachesTheProfilesWithoutAnOwnValue()
    {
        profile_set_value("silent", Tone, "/silent.ogg");
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();

        dconf("write", "fallback/sms.alert.tone", "'/f.ogg'");

        QTRY_VERIFY(recorder.calls().contains(line("change", "fallback", Tone, "/f.ogg")));
        const QByteArrayList expected{
            line("change", "fallback", Tone, "/f.ogg"), line("change", "fence", Tone, "/f.ogg"),
            line("change", "general", Tone, "/f.ogg"), line("active", "general", Tone, "/f.ogg"),
            line("change", "moodset", Tone, "/f.ogg")};
        QCOMPARE(recorder.calls(), expected);
    }

    void clearedValueIsToldAsTheFallbacks()
    {
        profile_set_value("fallback", Tone, "/f.ogg");
        profile_set_value("silent", Tone, "/silent.ogg");
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();

        profile_set_value("silent", Tone, "");

        QTRY_COMPARE(recorder.calls(), QByteArrayList({line("change", "silent", Tone, "/f.ogg")}));
    }

    void clearedValueWithoutAFallbackIsToldAsNull()
    {
        profile_set_value("silent", Tone, "/silent.ogg");
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();

        profile_set_value("silent", Tone, "");

        QTRY_COMPARE(recorder.calls(), QByteArrayList({line("change", "silent", Tone, nullptr)}));
    }

    void sameEffectiveValueCallsNobody()
    {
        profile_set_value("fallback", Tone, "/f.ogg");
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();

        profile_set_value("silent", Tone, "/f.ogg");
        dconf("write", "silent/sms.alert.tone", "'/f.ogg'");

        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 1);
    }

    void changesOfOneTurnCallBackOnceWithTheLastValue()
    {
        Recorder recorder;

        profile_set_value_as_int("silent", "ringing.alert.volume", 10);
        profile_set_value_as_int("silent", "ringing.alert.volume", 20);

        QTRY_VERIFY(!recorder.calls().isEmpty());
        QCOMPARE(
            recorder.calls(),
            QByteArrayList({line("change", "silent", "ringing.alert.volume", "20")}));
    }

    void resetOfTheDirectoryCallsBackForEachValue()
    {
        profile_set_value("silent", Tone, "/a.ogg");
        profile_set_value("moodset", Tone, "/b.ogg");
        profile_set_profile("silent");
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();

        MGConfItem::sync();
        runDconf({QStringLiteral("reset"), QStringLiteral("-f"), QStringLiteral("/com/zavro/")});

        const QByteArrayList expected{
            "profile general", line("change", "fence", "fence", nullptr),
            line("change", "moodset", Tone, nullptr), line("change", "silent", Tone, nullptr)};
        QTRY_COMPARE(recorder.calls(), expected);
    }

    void keysBesideTheProfilesCallNobody()
    {
        Recorder recorder;

        dconf("write", "general/dir/key", "'x'");
        dconf("write", "other", "'x'");
        runDconf(
            {QStringLiteral("write"), QStringLiteral("/com/zavro/profiles"), QStringLiteral("1")});

        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 1);
    }

    void quitTrackerCallsNobody()
    {
        Recorder recorder;
        profile_set_value("silent", Tone, "/a.ogg");

        profile_tracker_quit();
        QCoreApplication::processEvents();
        dconf("write", "silent/sms.alert.tone", "'/b.ogg'");
        QVERIFY(startTracker());

        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 1);
    }

    void quitTrackerCostsNoBusTraffic()
    {
        const Recorder recorder;
        QVERIFY(settle(recorder));
        const QSignalSpy changes(&DconfStore::instance(), &DconfStore::changed);
        const MGConfItem fence(QStringLiteral("/test/fence"));
        const QSignalSpy fenceChanges(&fence, &MGConfItem::valueChanged);

        profile_tracker_quit();
        dconf("write", "silent/sms.alert.tone", "'/b.ogg'");
        runDconf({QStringLiteral("write"), QStringLiteral("/test/fence"), QStringLiteral("1")});

        QTRY_COMPARE(fenceChanges.count(), 1);
        QVERIFY(changes.contains(QVariantList{QByteArray("/test/fence")}));
        QVERIFY(!changes.contains(
            QVariantList{QByteArray("/com/zavro/profile/silent/sms.alert.tone")}));
    }

    void foreignChangeBeforeTheWatchIsSettledIsFoundWhenItIs()
    {
        Recorder recorder;
        QVERIFY(settle(recorder));
        recorder.take();
        DconfStore& store = DconfStore::instance();
        {
            // The tracker does not see this change, like one between its first look at the values
            // and the start of its watch.
            const QSignalBlocker blind(&store);
            const QSignalSpy changes(store.findChild<DconfWatch*>(), &DconfWatch::changed);
            dconf("write", "silent/sms.alert.tone", "'/b.ogg'");
            QTRY_VERIFY(changes.contains(
                QVariantList{QByteArray("/com/zavro/profile/silent/sms.alert.tone")}));
        }
        QCoreApplication::processEvents();
        QCOMPARE(recorder.calls(), QByteArrayList());

        // This is how the store announces that a watch is active.
        Q_EMIT store.changed("/com/zavro/profile/");

        QTRY_COMPARE(recorder.calls(), QByteArrayList{line("change", "silent", Tone, "/b.ogg")});
    }

    void trackerStartedTwiceIsStoppedByOneQuit()
    {
        Recorder recorder;

        profile_tracker_init();
        profile_tracker_quit();
        profile_set_value("silent", Tone, "/a.ogg");
        QCoreApplication::processEvents();
        QVERIFY(startTracker());

        QVERIFY(settle(recorder));
        QCOMPARE(recorder.calls().size(), 1);
    }

    void deathOfTheServiceLosesNoLaterChange()
    {
        Recorder recorder;

        QVERIFY(killDconfService());
        dconf("write", "silent/sms.alert.tone", "'/b.ogg'");

        QTRY_COMPARE(recorder.calls(), QByteArrayList({line("change", "silent", Tone, "/b.ogg")}));
    }

    void removedCallbackIsNotCalledAndItsDataFreedOnce()
    {
        int calls = 0;
        static int freed;
        freed = 0;
        const auto count = [](const char*, void* data) { ++*static_cast<int*>(data); };
        const auto free = [](void*) { ++freed; };
        profile_track_add_profile_cb(count, &calls, free);

        QCOMPARE(profile_track_remove_profile_cb(count, nullptr), -1);
        QCOMPARE(profile_track_remove_profile_cb(count, &calls), 0);
        QCOMPARE(profile_track_remove_profile_cb(count, &calls), -1);

        Recorder recorder;
        profile_set_profile("silent");
        QTRY_COMPARE(recorder.calls().size(), 1);
        QCOMPARE(calls, 0);
        QCOMPARE(freed, 1);
    }

    void callbackMayRemoveItselfAndOthers()
    {
        static int calls;
        calls = 0;
        static void (*remove)(const char*, void*);
        remove = [](const char*, void* data) {
            ++calls;
            profile_track_remove_profile_cb(remove, nullptr);
            profile_track_remove_profile_cb(remove, data);
        };
        profile_track_add_profile_cb(remove, nullptr, nullptr);
        profile_track_add_profile_cb(remove, nullptr, nullptr);
        Recorder recorder;

        profile_set_profile("silent");

        QTRY_COMPARE(recorder.calls().size(), 1);
        QCOMPARE(calls, 1);
    }

    void callbackMayChangeAValue()
    {
        const auto answer = [](const char*, const char* key, const char*, const char*, void*) {
            if (qstrcmp(key, Tone) == 0) {
                profile_set_value("moodset", "answer", "given");
            }
        };
        profile_track_add_change_cb(answer, nullptr, nullptr);
        Recorder recorder;

        profile_set_value("silent", Tone, "/a.ogg");

        const QByteArrayList expected{
            line("change", "silent", Tone, "/a.ogg"), line("change", "moodset", "answer", "given")};
        QTRY_COMPARE(recorder.calls(), expected);
        profile_track_remove_change_cb(answer, nullptr);
    }
};

QTEST_GUILESS_MAIN(ProfileTrackerTest)

#include "tst_profiletracker.moc"
