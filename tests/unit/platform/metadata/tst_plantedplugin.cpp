// SPDX-License-Identifier: BSD-3-Clause
#include "picturereader.h"

#include "encodedpicture.h"
#include "hostilepicture.h"
#include "messagelog.h"
#include "paintedpicture.h"
#include "testfolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QTest>

namespace {

const QSize Size(40, 30);
const QString Asked = QStringLiteral("The planted plugin was asked");

} // namespace

/// Tests with a plugin of the system that claims to read every file.
class PlantedPluginTest : public QObject
{
    Q_OBJECT

private:
    TestFolder m_folder;

private Q_SLOTS:
    static void initTestCase()
    {
        QCoreApplication::addLibraryPath(QStringLiteral(PLANTED_PLUGINS));
    }

    void pluginWouldElseBeAsked_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        // It is asked because of the content and because of the name, before the decoder of the
        // content's format.
        QTest::newRow("by the content") << QStringLiteral("a.jpg") << QByteArray("no picture");
        QTest::newRow("by the name")
            << QStringLiteral("a.planted") << encodedPicture(quadrantPicture(Size), "jpeg");
    }

    void pluginWouldElseBeAsked()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        MessageLog log;
        m_folder.write(name, bytes);

        QImageReader(m_folder.path(name)).size();

        QVERIFY(log.takeWarnings().contains(Asked));
    }

    void pluginIsNotAskedForFilesOfOtherFormats_data()
    {
        addUnlistedFormats();
        QTest::newRow("MNG") << endlessAnimation();
        QTest::newRow("nested SVG") << nestedVectorPicture();
        QTest::newRow("text") << QByteArrayLiteral("no picture");
        QTest::newRow("empty") << QByteArray();
    }

    void pluginIsNotAskedForFilesOfOtherFormats()
    {
        QFETCH(QByteArray, bytes);
        const MessageLog log;

        for (const char* const name : {"a.jpg", "a.planted"}) {
            m_folder.write(QLatin1String(name), bytes);
            PictureReader reader(m_folder.path(QLatin1String(name)));
            QCOMPARE(reader.size(), QSize());
            QVERIFY(reader.read().isNull());
        }
        QVERIFY(PictureReader(bytes).read().isNull());
    }

    void pluginIsNotAskedForPicturesThatAreRead_data()
    {
        QTest::addColumn<QByteArray>("format");
        for (const char* const format :
             {"jpeg", "png", "webp", "tiff", "bmp", "ppm", "pgm", "pbm"}) {
            QTest::newRow(format) << QByteArray(format);
        }
    }

    void pluginIsNotAskedForPicturesThatAreRead()
    {
        QFETCH(QByteArray, format);
        const MessageLog log;
        const QByteArray bytes = encodedPicture(quadrantPicture(Size), format.constData());

        for (const char* const name : {"a.jpg", "a.planted"}) {
            m_folder.write(QLatin1String(name), bytes);
            PictureReader reader(m_folder.path(QLatin1String(name)));
            QCOMPARE(reader.size(), Size);
            QCOMPARE(reader.read().size(), Size);
        }
        QCOMPARE(PictureReader(bytes).read().size(), Size);
    }

    // It is not asked for pictures that no other plugin reads, and not for damaged ones.
    void pluginIsNotAskedInPlaceOfAnother_data() { addStartsOfPictures(); }

    void pluginIsNotAskedInPlaceOfAnother()
    {
        QFETCH(QByteArray, bytes);
        MessageLog log;

        for (const char* const name : {"a.jpg", "a.planted"}) {
            m_folder.write(QLatin1String(name), bytes);
            PictureReader reader(m_folder.path(QLatin1String(name)));
            QCOMPARE(reader.size(), QSize());
            QVERIFY(reader.read().isNull());
        }
        QVERIFY(!log.takeMessages().contains(Asked));
    }
};

QTEST_GUILESS_MAIN(PlantedPluginTest)

#include "tst_plantedplugin.moc"
