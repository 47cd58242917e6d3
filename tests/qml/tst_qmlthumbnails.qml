// SPDX-License-Identifier: BSD-3-Clause
import Moodset 1.0
import QtQuick 2.15
import QtTest 1.15

// Thumbnails as images of QML.
TestCase {
    id: test

    function shown(url) {
        return createTemporaryObject(image, test, {
            "sourceSize": Qt.size(4, 3),
            "source": url
        });
    }

    function initTestCase() {
        verify(machine.writePicture("a b#c?d%.png"));
        verify(machine.writeFile("broken.jpg", "This is no picture."));
        verify(machine.start());
    }

    function test_a_modelsHaveThumbnailsOfOddNames() {
        const model = createTemporaryObject(photos, test);
        tryVerify(() => {
            return model.count > 0;
        });
        const row = model.indexOfUrl(machine.url("a b#c?d%.png"));
        verify(row >= 0);
        const picture = shown(model.get(row).thumbnail);
        tryCompare(picture, "status", Image.Ready);
        compare(picture.implicitWidth, 4);
        compare(picture.implicitHeight, 3);
    }

    function test_b_whatIsNoPictureIsAnError_data() {
        return [{
            "tag": "text",
            "url": machine.url("broken.jpg")
        }, {
            "tag": "missing",
            "url": machine.url("missing.jpg")
        }, {
            "tag": "nothing",
            "url": ""
        }, {
            "tag": "folder",
            "url": machine.url("")
        }, {
            "tag": "device",
            "url": "file:///dev/zero"
        }, {
            "tag": "network",
            "url": "http://localhost/a.jpg"
        }];
    }

    function test_b_whatIsNoPictureIsAnError(data) {
        ignoreWarning(new RegExp("no picture that can be read"));
        const picture = shown("image://moodset-thumbnail/" + data.url);
        tryCompare(picture, "status", Image.Error);
    }

    function test_c_requestsMayBeTakenBack() {
        for (let i = 0; i < 200; ++i) {
            const picture = image.createObject(test, {
                "source": "image://moodset-thumbnail/" + machine.url("a b#c?d%.png") + "?v=" + i
            });
            picture.source = "";
            picture.destroy();
        }
        const last = shown("image://moodset-thumbnail/" + machine.url("a b#c?d%.png") + "?v=last");
        tryCompare(last, "status", Image.Ready);
    }

    name: "QmlThumbnails"
    width: 100
    height: 100

    Component {
        id: image

        Image {
            asynchronous: true
        }

    }

    Component {
        id: photos

        PhotoModel {
        }

    }

}
