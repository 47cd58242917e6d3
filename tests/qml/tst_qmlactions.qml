// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import QtQuick 2.15
import QtTest 1.15

// The daemon's methods tell what has come of them.
TestCase {
    id: test

    property var outcome: null

    // The outcome of a call.
    function outcomeOf(begin) {
        outcome = null;
        const call = begin((result) => {
            test.outcome = result;
        });
        compare(outcome, null);
        verify(call > 0);
        tryVerify(() => {
            return outcome !== null;
        }, 30000);
        compare(outcome.call, call);
        return outcome;
    }

    function succeed(begin) {
        const result = outcomeOf(begin);
        compare(result.errorText, "");
        verify(result.succeeded);
        compare(result.error, Actions.NoError);
        return result;
    }

    function fail(error, begin) {
        const result = outcomeOf(begin);
        verify(!result.succeeded);
        compare(result.error, error);
        verify(result.errorText !== "");
        compare(result.undo, null);
        return result;
    }

    function made(name) {
        return succeed((done) => {
            return Actions.createMoodset(machine.url(name), done);
        }).moodset;
    }

    function initTestCase() {
        for (const name of ["a.png", "b.png", "c.png", "d.png"]) verify(machine.writePicture(name))
        verify(machine.writeFile("broken.jpg", "This is no picture."));
        verify(machine.start());
    }

    function cleanup() {
        compare(Actions.running, 0);
        Actions.networkTimeout = 60000;
    }

    function cleanupTestCase() {
        machine.takeWarnings();
    }

    function test_a_aMoodsetIsMadeActiveAndTheOneBeforeAgain() {
        const first = succeed((done) => {
            return Actions.setMoodset(machine.url("a.png"), done);
        });
        compare(first.method, "setMoodset");
        compare(first.moodset.name, "a");
        compare(first.undo, null);
        const second = succeed((done) => {
            return Actions.setMoodset(machine.url("b.png").toString(), done);
        });
        compare(machine.storedValue("/desktop/zavro/theme/active_moodset"), "'" + machine.path("b.png") + "'");
        succeed((done) => {
            return Actions.undo(second.undo, done);
        });
        compare(machine.storedValue("/desktop/zavro/theme/active_moodset"), "'" + machine.path("a.png") + "'");
        // The keys are the same then, and the daemon has still done it.
        succeed((done) => {
            return Actions.setMoodset(machine.path("a.png"), done);
        });
    }

    function test_b_aPictureThatCannotBeReadIsNotActive() {
        succeed((done) => {
            return Actions.setMoodset(machine.url("a.png"), done);
        });
        fail(Actions.NotDone, (done) => {
            return Actions.setMoodset(machine.url("broken.jpg"), done);
        });
        fail(Actions.NotDone, (done) => {
            return Actions.setMoodset(machine.url("missing.jpg"), done);
        });
        fail(Actions.NotDone, (done) => {
            return Actions.createMoodset(machine.url("broken.jpg"), done);
        });
        // One that the library knows, whose picture is broken by now.
        verify(machine.writePicture("f.png"));
        made("f.png");
        verify(machine.writeFile("f.png", "This is no picture."));
        fail(Actions.NotDone, (done) => {
            return Actions.setMoodset(machine.url("f.png"), done);
        });
        compare(machine.storedValue("/desktop/zavro/theme/active_moodset"), "'" + machine.path("a.png") + "'");
    }

    function test_c_valuesOfQmlBecomeThoseOfTheDaemon() {
        const moodset = made("c.png");
        const result = succeed((done) => {
            return Actions.saveAttributes(moodset.contentId, {
                "displayName": "Evening",
                "favorite": true,
                "ringerVolume": 41.6,
                "highlightColor": Qt.rgba(1, 0.5, 0, 1),
                "primaryColor": "navy",
                "chatToneEnabled": false,
                "resources": {
                    "ringerToneFile": {
                        "url": machine.url("a.png")
                    }
                }
            }, done);
        });
        compare(result.moodset.name, "Evening");
        compare(result.moodset.favorite, true);
        compare(result.moodset.ringerVolume, 42);
        compare(result.moodset.highlightColor.toString(), "#ff8000");
        compare(result.moodset.primaryColor.toString(), "#000080");
        compare(result.moodset.chatToneEnabled, false);
        const back = succeed((done) => {
            return Actions.undo(result.undo, done);
        });
        compare(back.moodset.displayName, "");
        compare(back.moodset.favorite, false);
        compare(back.moodset.ringerVolume, moodset.ringerVolume);
        compare(back.moodset.highlightColor, moodset.highlightColor);
        compare(back.moodset.chatToneEnabled, moodset.chatToneEnabled);
    }

    function test_d_valuesThatMakeNoSenseAreRefused_data() {
        return [{
            "tag": "undefined",
            "values": {
                "highlightColor": undefined
            }
        }, {
            "tag": "null",
            "values": {
                "highlightColor": null
            }
        }, {
            "tag": "no colour",
            "values": {
                "highlightColor": "sunny"
            }
        }, {
            "tag": "colour as a number",
            "values": {
                "highlightColor": 5
            }
        }, {
            "tag": "NaN",
            "values": {
                "ringerVolume": NaN
            }
        }, {
            "tag": "infinite",
            "values": {
                "ringerVolume": Infinity
            }
        }, {
            "tag": "too loud",
            "values": {
                "ringerVolume": 101
            }
        }, {
            "tag": "negative",
            "values": {
                "ringerVolume": -1
            }
        }, {
            "tag": "volume as a text",
            "values": {
                "ringerVolume": "loud"
            }
        }, {
            "tag": "colour as a volume",
            "values": {
                "ringerVolume": Qt.rgba(1, 0, 0, 1)
            }
        }, {
            "tag": "colour as a name",
            "values": {
                "displayName": Qt.rgba(1, 0, 0, 1)
            }
        }, {
            "tag": "list as a name",
            "values": {
                "displayName": ["a"]
            }
        }, {
            "tag": "blank name",
            "values": {
                "displayName": "  "
            }
        }, {
            "tag": "NUL in a name",
            "values": {
                "displayName": "a\u0000b"
            }
        }, {
            "tag": "text as a switch",
            "values": {
                "favorite": "yes"
            }
        }, {
            "tag": "number as a switch",
            "values": {
                "ringerToneEnabled": 1
            }
        }, {
            "tag": "unknown",
            "values": {
                "colour": "red"
            }
        }, {
            "tag": "object",
            "values": {
                "favorite": test
            }
        }, {
            "tag": "function",
            "values": {
                "favorite": () => {
                    return true;
                }
            }
        }, {
            "tag": "date",
            "values": {
                "displayName": new Date()
            }
        }, {
            "tag": "point",
            "values": {
                "displayName": Qt.point(1, 2)
            }
        }, {
            "tag": "unknown tone",
            "values": {
                "resources": {
                    "doorbell": {
                        "url": "file:///a.ogg"
                    }
                }
            }
        }, {
            "tag": "tone of the network",
            "values": {
                "resources": {
                    "ringerToneFile": {
                        "url": "http://a/b"
                    }
                }
            }
        }, {
            "tag": "tone as a number",
            "values": {
                "resources": {
                    "ringerToneFile": {
                        "url": 5
                    }
                }
            }
        }, {
            "tag": "tones as a text",
            "values": {
                "resources": "a"
            }
        }, {
            "tag": "no attributes",
            "values": {
            }
        }, {
            "tag": "a text",
            "values": "favorite"
        }, {
            "tag": "nothing",
            "values": undefined
        }];
    }

    function test_d_valuesThatMakeNoSenseAreRefused(data) {
        fail(Actions.InvalidArgument, (done) => {
            return Actions.saveAttributes(1, data.values, done);
        });
    }

    function test_e_argumentsThatMakeNoSenseAreRefused_data() {
        return [{
            "tag": "undefined",
            "value": undefined
        }, {
            "tag": "null",
            "value": null
        }, {
            "tag": "NaN",
            "value": NaN
        }, {
            "tag": "text",
            "value": "a"
        }, {
            "tag": "empty",
            "value": ""
        }, {
            "tag": "fraction",
            "value": 1.5
        }, {
            "tag": "negative",
            "value": -1
        }, {
            "tag": "colour",
            "value": Qt.rgba(1, 0, 0, 1)
        }, {
            "tag": "object",
            "value": {
            }
        }, {
            "tag": "relative",
            "value": "a/b.jpg"
        }, {
            "tag": "other scheme",
            "value": "ftp://a/b.jpg"
        }, {
            "tag": "huge",
            "value": 1e+300
        }];
    }

    function test_e_argumentsThatMakeNoSenseAreRefused(data) {
        fail(Actions.InvalidArgument, (done) => {
            return Actions.setMoodset(data.value, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.createMoodset(data.value, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.indexFile(data.value, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.installPackage(data.value, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.remove(data.value, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.saveAttributes(data.value, {
                "favorite": true
            }, done);
        });
        fail(Actions.InvalidArgument, (done) => {
            return Actions.undo(data.value, done);
        });
    }

    function test_f_whatIsGoneCannotBeChanged() {
        fail(Actions.Gone, (done) => {
            return Actions.saveAttributes(99999, {
                "favorite": true
            }, done);
        });
        fail(Actions.Gone, (done) => {
            return Actions.remove(99999, done);
        });
    }

    function test_g_aRemovedMoodsetComesBackWithItsEdits() {
        const moodset = made("d.png");
        succeed((done) => {
            return Actions.saveAttributes(moodset.contentId, {
                "displayName": "Kept",
                "ringerVolume": 7
            }, done);
        });
        const shown = createTemporaryObject(item, test, {
            "url": moodset.url
        });
        tryVerify(() => {
            return shown.moodset !== null;
        });
        const removed = succeed((done) => {
            return Actions.remove(moodset.contentId, done);
        });
        compare(removed.moodset.name, "Kept");
        tryVerify(() => {
            return shown.moodset === null;
        }, 10000);
        const back = succeed((done) => {
            return Actions.undo(removed.undo, done);
        });
        compare(back.moodset.name, "Kept");
        compare(back.moodset.ringerVolume, 7);
        tryVerify(() => {
            return shown.moodset !== null && shown.moodset.name === "Kept";
        }, 10000);
    }

    function test_h_aMoodsetThatWasMadeCanBeTakenBack() {
        verify(machine.writePicture("e.png"));
        const result = succeed((done) => {
            return Actions.createMoodset(machine.url("e.png"), done);
        });
        succeed((done) => {
            return Actions.undo(result.undo, done);
        });
        const shown = createTemporaryObject(item, test, {
            "url": machine.url("e.png")
        });
        tryCompare(shown, "status", MoodsetItem.Ready);
        compare(shown.moodset, null);
    }

    function test_i_picturesOfTheNetworkAreWaitedForWithALimit() {
        const result = succeed((done) => {
            return Actions.setMoodset(machine.address(true), done);
        });
        verify(result.moodset.url.toString().indexOf("online_img") > 0);
        compare(Theme.activeMoodset, result.moodset.url);
        Actions.networkTimeout = 500;
        fail(Actions.TimedOut, (done) => {
            return Actions.setMoodset(machine.address(false), done);
        });
    }

    function test_j_waitingCanBeGivenUp() {
        outcome = null;
        const call = Actions.setMoodset(machine.address(false), (result) => {
            test.outcome = result;
        });
        compare(Actions.running, 1);
        Actions.cancel(call);
        tryVerify(() => {
            return outcome !== null;
        });
        compare(outcome.error, Actions.Cancelled);
        Actions.cancel(call);
        Actions.cancel(12345);
    }

    function test_k_bundlesAreTakenInOrRefused() {
        const good = machine.writeOwnBundle("good", '{"displayName": "Good", "wallpaper": "w.png"}');
        const taken = succeed((done) => {
            return Actions.installPackage(good, done);
        });
        compare(taken.moodsets.length, 1);
        compare(taken.refused.length, 0);
        const bad = machine.writeOwnBundle("bad", '{"displayName": ');
        const refused = fail(Actions.NotDone, (done) => {
            return Actions.installPackage(machine.fileUrl(bad), done);
        });
        compare(refused.refused, [bad + "/bad.moodset"]);
        fail(Actions.InvalidArgument, (done) => {
            return Actions.installPackage(machine.path("none"), done);
        });
        machine.takeWarnings();
    }

    function test_l_filesAreTakenIn() {
        // In a folder that the daemon watches, it would hear of the file twice.
        const folder = machine.writeOwnBundle("loose", "{}");
        succeed((done) => {
            return Actions.indexFile(machine.fileUrl(folder + "/images/w.png"), done);
        });
        succeed((done) => {
            return Actions.refreshMoodsets(done);
        });
    }

    function test_m_callsThatOvertakeEachOtherAllEnd() {
        let ended = 0;
        const moodset = made("a.png");
        for (let i = 0; i < 40; ++i) {
            Actions.setMoodset(machine.url(i % 2 ? "a.png" : "b.png"), () => {
                return ++ended;
            });
            Actions.saveAttributes(moodset.contentId, {
                "ringerVolume": i
            }, () => {
                return ++ended;
            });
        }
        tryVerify(() => {
            return ended === 80;
        }, 30000);
    }

    function test_n_aDaemonThatEndsIsTold() {
        verify(machine.pause());
        outcome = null;
        Actions.setMoodset(machine.url("a.png"), (result) => {
            test.outcome = result;
        });
        wait(50);
        verify(machine.kill());
        tryVerify(() => {
            return outcome !== null;
        }, 10000);
        verify(!outcome.succeeded);
        compare(outcome.error, Actions.NoDaemon);
        fail(Actions.NoDaemon, (done) => {
            return Actions.setMoodset(machine.url("a.png"), done);
        });
        verify(machine.start());
        succeed((done) => {
            return Actions.setMoodset(machine.url("a.png"), done);
        });
    }

    name: "QmlActions"

    Component {
        id: item

        MoodsetItem {
        }

    }

}
