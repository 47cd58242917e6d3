// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import QtQuick 2.15
import QtTest 1.15

// The models show what the library holds, and follow it row by row.
TestCase {
    id: test

    property url coast

    // A model that is filled, with a note of what it announces.
    function filled(component, properties) {
        const model = createTemporaryObject(component, test, properties || {
        });
        tryCompare(model, "status", PhotoModel.Ready, 20000);
        return model;
    }

    function watched(model, signalName) {
        return createTemporaryObject(spy, test, {
            "target": model,
            "signalName": signalName
        });
    }

    function values(model, role) {
        const list = [];
        for (let row = 0; row < model.count; ++row) list.push(model.get(row)[role])
        return list;
    }

    // The files that the test has made, and not those by which the machine sees that all is read.
    function names(model) {
        return values(model, "fileName").filter((name) => {
            return !name.startsWith("fence");
        }).join(" ");
    }

    function initTestCase() {
        verify(machine.writePhoto("old.jpg", "2019:05:06 07:08:09"));
        verify(machine.writePhoto("new.jpg", "2024:03:31 01:02:03"));
        verify(machine.writePicture("undated.png"));
        coast = machine.writeBundle("coast", '{"displayName": "Coast", "wallpaper": "w.png"}');
        verify(coast != "");
        verify(machine.start());
    }

    function cleanup() {
        compare(machine.takeWarnings(), []);
    }

    function test_a_photosComeNewestFirst() {
        const model = filled(photoModel);
        compare(names(model), "new.jpg old.jpg undated.png");
        const photo = model.get(0);
        compare(photo.month, "2024-03");
        compare(photo.width, 8);
        compare(photo.folder, machine.path("").replace(/\/$/, ""));
        compare(photo.url, machine.url("new.jpg"));
        compare(photo.dateTaken.getFullYear(), 2024);
        compare(photo.writable, true);
        compare(photo.readOnly, false);
        verify(photo.modificationTime.getFullYear() >= 2024);
        const undated = model.get(model.indexOfUrl(machine.url("undated.png")));
        compare(undated.fileName, "undated.png");
        compare(undated.dateTaken, undefined);
        compare(undated.month, "");
        compare(model.get(model.count), null);
        compare(model.get(-1), null);
        compare(model.indexOf(photo.contentId), 0);
        compare(model.indexOf(-5), -1);
    }

    function test_b_propertiesChooseAndOrder() {
        const model = filled(photoModel);
        model.order = PhotoModel.OldestFirst;
        tryVerify(() => {
            return names(model) === "old.jpg new.jpg undated.png";
        });
        model.search = "2019-05";
        tryVerify(() => {
            return names(model) === "old.jpg";
        });
        model.search = "JPG new";
        tryVerify(() => {
            return names(model) === "new.jpg";
        });
        model.search = "";
        model.order = PhotoModel.NewestFirst;
        model.limit = 2;
        tryVerify(() => {
            return names(model) === "new.jpg old.jpg";
        });
        model.limit = -1;
        model.folder = machine.path("none");
        tryVerify(() => {
            return model.status === PhotoModel.Ready && model.count === 0;
        });
    }

    function test_c_changesComeAsSingleRows() {
        const model = filled(photoModel);
        const inserted = watched(model, "rowsInserted");
        const removed = watched(model, "rowsRemoved");
        const moved = watched(model, "rowsMoved");
        const changed = watched(model, "dataChanged");
        const reset = watched(model, "modelReset");
        verify(machine.writePhoto("middle.jpg", "2021:01:01 00:00:00"));
        tryVerify(() => {
            return names(model) === "new.jpg middle.jpg old.jpg undated.png";
        }, 10000);
        compare(inserted.count, 1);
        compare(inserted.signalArguments[0][1], 1);
        verify(machine.writePhoto("middle.jpg", "2018:01:01 00:00:00"));
        tryVerify(() => {
            return names(model) === "new.jpg old.jpg middle.jpg undated.png";
        }, 10000);
        compare(removed.count, 0);
        compare(inserted.count, 1);
        compare(moved.count, 1);
        tryVerify(() => {
            return changed.count > 0;
        });
        verify(machine.removeFile("middle.jpg"));
        tryVerify(() => {
            return names(model) === "new.jpg old.jpg undated.png";
        }, 10000);
        compare(removed.count, 1);
        compare(reset.count, 0);
    }

    function test_d_moodsetsHaveWhatPagesShow() {
        const model = filled(moodsetModel);
        const row = model.indexOfUrl(coast);
        verify(row >= 0);
        const moodset = model.get(row);
        compare(moodset.name, "Coast");
        verify(typeof moodset.readOnly === "string");
        compare(typeof moodset.writable, "boolean");
        verify(moodset.modificationTime.getFullYear() >= 2024);
        const favorites = filled(moodsetModel, {
            "filter": MoodsetModel.Favorites
        });
        const others = filled(moodsetModel, {
            "filter": MoodsetModel.NonFavorites
        });
        const isFavorite = moodset.favorite;
        compare(favorites.count, isFavorite ? 1 : 0);
        verify(machine.edit(coast, {
            "favorite": !isFavorite
        }));
        tryVerify(() => {
            return model.get(row).favorite === !isFavorite;
        }, 10000);
        tryCompare(favorites, "count", isFavorite ? 0 : 1, 10000);
        tryCompare(others, "count", isFavorite ? 1 : 0, 10000);
        verify(machine.edit(coast, {
            "favorite": isFavorite
        }));
        tryCompare(favorites, "count", isFavorite ? 1 : 0, 10000);
    }

    function test_e_filesAreChosenByType() {
        const model = filled(fileModel, {
            "mimeType": "image/png"
        });
        verify(names(model).indexOf("undated.png") >= 0);
        verify(names(model).indexOf("new.jpg") < 0);
    }

    function test_f_anItemIsNullWhenItIsGone() {
        verify(machine.createMoodset("undated.png"));
        const shown = createTemporaryObject(item, test, {
            "url": machine.url("undated.png")
        });
        tryCompare(shown, "status", MoodsetItem.Ready);
        tryVerify(() => {
            return shown.moodset !== null;
        }, 10000);
        compare(shown.moodset.name, "undated");
        const byId = createTemporaryObject(item, test, {
            "contentId": shown.moodset.contentId
        });
        tryVerify(() => {
            return byId.moodset !== null;
        });
        verify(machine.edit(shown.moodset.url, {
            "displayName": "Other"
        }));
        tryVerify(() => {
            return shown.moodset.name === "Other" && byId.moodset.name === "Other";
        }, 10000);
        Actions.remove(shown.moodset.contentId);
        tryVerify(() => {
            return shown.moodset === null && byId.moodset === null;
        }, 10000);
        byId.contentId = 0;
        compare(byId.status, MoodsetItem.Null);
    }

    function test_g_eightModelsShareOneThread() {
        const models = [];
        for (let i = 0; i < 8; ++i) models.push(createTemporaryObject(i % 2 ? moodsetModel : photoModel, test))
        for (const model of models) tryCompare(model, "status", PhotoModel.Ready)
        compare(machine.threads("moodset library"), 1);
        verify(machine.writePhoto("all.jpg", "2022:01:01 00:00:00"));
        for (let i = 0; i < 8; i += 2) tryVerify(() => {
            return models[i].indexOfUrl(machine.url("all.jpg")) === 1;
        }, 10000)
        verify(machine.removeFile("all.jpg"));
        for (let i = 0; i < 8; i += 2) tryVerify(() => {
            return models[i].indexOfUrl(machine.url("all.jpg")) === -1;
        }, 10000)
    }

    function test_h_modelsMayGoWhileTheyRead() {
        for (let i = 0; i < 50; ++i) {
            const model = photoModel.createObject(test);
            model.search = "a" + i;
            model.destroy();
        }
        wait(0);
    }

    function test_i_aLibraryThatIsGoneIsAnErrorAndKeepsTheRows() {
        const model = filled(photoModel);
        verify(machine.stop());
        verify(machine.removeLibrary());
        model.refresh();
        tryCompare(model, "status", PhotoModel.Error);
        verify(model.error !== "");
        compare(names(model), "new.jpg old.jpg undated.png");
        verify(machine.start());
        tryVerify(() => {
            return model.status === PhotoModel.Ready && names(model) === "new.jpg old.jpg undated.png";
        }, 20000);
    }

    function test_j_aDaemonThatIsKilledChangesNothing() {
        const model = filled(moodsetModel);
        const count = model.count;
        verify(machine.kill());
        model.refresh();
        tryCompare(model, "status", MoodsetModel.Ready);
        compare(model.count, count);
        verify(machine.start());
    }

    name: "QmlModels"

    Component {
        id: photoModel

        PhotoModel {
        }

    }

    Component {
        id: moodsetModel

        MoodsetModel {
        }

    }

    Component {
        id: fileModel

        FileModel {
        }

    }

    Component {
        id: item

        MoodsetItem {
        }

    }

    Component {
        id: spy

        SignalSpy {
        }

    }

}
