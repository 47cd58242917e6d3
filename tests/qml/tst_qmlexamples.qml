// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import QtQuick 2.15
import QtTest 1.15

// The examples of the module's page work as they are written.
Item {
    id: stage

    width: 400
    height: 700

    TestCase {
        function initTestCase() {
            verify(machine.writePhoto("coast.jpg", "2024:03:31 01:02:03"));
            verify(machine.start());
            verify(machine.createMoodset("coast.jpg"));
        }

        function test_a_eachTypeHasAnExample() {
            const headings = machine.examples().map((example) => {
                return example.tag;
            });
            for (const type of ["MoodsetModel", "PhotoModel", "FileModel", "MoodsetItem", "Theme", "Actions", "ProfileManager", "Thumbnails"]) verify(headings.indexOf(type) >= 0, type)
        }

        function test_b_anExampleRuns_data() {
            return machine.examples();
        }

        function test_b_anExampleRuns(data) {
            machine.takeQmlWarnings();
            const object = Qt.createQmlObject(data.source, stage, data.tag);
            verify(object);
            if (object.model)
                tryVerify(() => {
                return object.model.status === PhotoModel.Ready;
            });

            if (data.tag === "MoodsetModel" || data.tag === "PhotoModel")
                tryVerify(() => {
                return object.count > 0 && object.itemAtIndex(0) !== null;
            });

            if (data.tag === "MoodsetItem")
                compare(object.text, "There is no such moodset.");

            if (data.tag === "Actions") {
                object.picture = machine.url("coast.jpg");
                object.clicked(null);
                tryCompare(object, "result", "coast", 20000);
            }
            wait(0);
            // The picture of the example is on another machine.
            compare(machine.takeQmlWarnings().filter((warning) => {
                return warning.indexOf("no picture that can be read") < 0;
            }), []);
            object.destroy();
        }

        name: "QmlExamples"
        when: windowShown
    }

}
