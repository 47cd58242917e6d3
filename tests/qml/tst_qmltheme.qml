// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import QtQuick 2.15
import QtTest 1.15

// The theme as QML follows it.
TestCase {
    id: test

    property int versions: 0
    property color shown: Theme.highlightColor || "black"

    function initTestCase() {
        verify(machine.writePicture("a.png", "red"));
        verify(machine.writePicture("b.png", "green"));
        verify(machine.start());
    }

    function cleanup() {
        compare(machine.takeWarnings(), []);
    }

    function test_a_whatIsNotSetIsUndefined() {
        compare(Theme.highlightColor, undefined);
        compare(Theme.homeWallpaper, "");
        compare(Theme.activeMoodset, "");
        compare(Theme.activeName, "");
    }

    function test_b_aMoodsetIsShownWhenItIsSet() {
        verify(machine.setMoodset(machine.url("a.png")));
        tryCompare(Theme, "activeMoodset", machine.url("a.png"), 10000);
        tryCompare(Theme, "activeName", "a", 10000);
        verify(/\.jpg\?v=[0-9a-f]+$/.test(Theme.homeWallpaper));
        verify(/\.jpg\?v=[0-9a-f]+$/.test(Theme.applicationWallpaper));
        compare(machine.storedValue("/desktop/zavro/theme/color/highlight"), "'" + Theme.highlightColor.toString().replace("#", "#ff") + "'");
        compare(test.shown, Theme.highlightColor);
    }

    function test_c_aPictureUnderItsOldNameHasAnotherUrl() {
        verify(machine.setMoodset(machine.url("a.png")));
        tryCompare(Theme, "activeMoodset", machine.url("a.png"), 10000);
        const wallpaper = Theme.homeWallpaper;
        const version = Theme.version;
        verify(machine.writePicture("a.png", "blue"));
        verify(machine.setMoodset(machine.url("a.png")));
        tryVerify(() => {
            return Theme.homeWallpaper != wallpaper && Theme.version > version;
        }, 10000);
        compare(Theme.homeWallpaper.toString().split("?")[0], wallpaper.toString().split("?")[0]);
    }

    function test_d_aNameThatIsEditedIsShown() {
        verify(machine.setMoodset(machine.url("b.png")));
        tryCompare(Theme, "activeName", "b", 10000);
        verify(machine.edit(machine.url("b.png"), {
            "displayName": "Meadow"
        }));
        tryCompare(Theme, "activeName", "Meadow", 10000);
    }

    function test_e_aProfileCanBeReadAndSet() {
        const manager = createTemporaryObject(profile, test);
        compare(manager.profile, ProfileManager.General);
        manager.ringerVolume = 37;
        compare(manager.ringerVolume, 37);
        tryVerify(() => {
            return machine.storedValue("/com/zavro/profile/general/ringing.alert.volume") === "'37'";
        });
    }

    name: "QmlTheme"

    Connections {
        function onChanged() {
            ++test.versions;
        }

        target: Theme
    }

    Component {
        id: profile

        ProfileManager {
        }

    }

}
