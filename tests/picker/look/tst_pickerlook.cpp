// SPDX-License-Identifier: BSD-3-Clause
#include "actions.h"
#include "encodedpicture.h"
#include "pickerdisplay.h"
#include "pickerengine.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSize>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

/// What the app looks like: each page and state, to the pixel, beside the pictures of PICTURES.
/// With a folder in PICTURES_TO, the pictures are written there.
class PickerLookTest : public QObject
{
    Q_OBJECT

private:
    /// What the library holds. Each follows the one before.
    enum class Library { None, Damaged, Empty, Samples };

    enum class Text { Usual, Large, RightToLeft };

    enum class Sizes { Phone, Usual, All };

    /// A page or a state of one.
    struct Scene
    {
        const char* name;
        Library library;
        Sizes sizes;
        int tab;
        /// What is done from the tab on.
        std::function<bool(PickerDisplay&)> open;
        /// What of the page is at the top; empty for its beginning.
        QString top = {};
        Text text = Text::Usual;
        /// Whether what `open` shows goes by itself after a while, which a busy machine may
        /// outlast.
        bool isPassing = false;
    };

    static constexpr QSize Phone{360, 640};
    static constexpr QSize Laptop{1280, 800};
    static constexpr QSize Screen{1920, 1080};
    static constexpr QSize LargeScreen{3840, 2160};

    static std::vector<Scene> scenes()
    {
        return {
            {"no-library", Library::None, Sizes::Usual, 0, stay},
            {"no-library-pictures", Library::None, Sizes::Phone, 1, stay},
            {"damaged-library", Library::Damaged, Sizes::Phone, 0, tryAgain},
            {"no-moodsets", Library::Empty, Sizes::Usual, 0, stay},
            {"no-pictures", Library::Empty, Sizes::Phone, 1, stay},
            {"moodsets", Library::Samples, Sizes::All, 0, stay},
            {"moodsets-large", Library::Samples, Sizes::Phone, 0, stay, {}, Text::Large},
            {"moodsets-mirrored", Library::Samples, Sizes::Phone, 0, stay, {}, Text::RightToLeft},
            {"pictures", Library::Samples, Sizes::All, 1, stay},
            {"pictures-large", Library::Samples, Sizes::Phone, 1, stay, {}, Text::Large},
            {"nothing-found", Library::Samples, Sizes::Phone, 1, searchInVain},
            {"moodset", Library::Samples, Sizes::All, 0, openMoodset},
            {"moodset-large", Library::Samples, Sizes::Phone, 0, openMoodset, {}, Text::Large},
            {"moodset-mirrored",
             Library::Samples,
             Sizes::Phone,
             0,
             openMoodset,
             {},
             Text::RightToLeft},
            {"notice", Library::Samples, Sizes::Phone, 0, tellSuccess, {}, Text::Usual, true},
            {"notice-of-failure",
             Library::Samples,
             Sizes::Phone,
             0,
             tellFailure,
             {},
             Text::Usual,
             true},
            {"notice-large", Library::Samples, Sizes::Phone, 0, tellSuccess, {}, Text::Large, true},
            {"moodset-color", Library::Samples, Sizes::Phone, 0, editColor,
             QStringLiteral("highlightColor")},
            {"moodset-color-large", Library::Samples, Sizes::Phone, 0, editColor,
             QStringLiteral("highlightColor"), Text::Large},
            {"moodset-sounds", Library::Samples, Sizes::Phone, 0, openMoodset,
             QStringLiteral("volume")},
            {"moodset-sounds-large", Library::Samples, Sizes::Phone, 0, openMoodset,
             QStringLiteral("volume"), Text::Large},
            {"moodset-sounds-mirrored", Library::Samples, Sizes::Phone, 0, openMoodset,
             QStringLiteral("volume"), Text::RightToLeft},
            {"moodset-shells", Library::Samples, Sizes::Phone, 0, openShells,
             QStringLiteral("clockAlarmTone")},
            {"moodset-shells-large", Library::Samples, Sizes::Phone, 0, openShells,
             QStringLiteral("clockAlarmTone"), Text::Large},
            {"moodset-shells-mirrored", Library::Samples, Sizes::Phone, 0, openShells,
             QStringLiteral("clockAlarmTone"), Text::RightToLeft},
            {"moodset-gone", Library::Samples, Sizes::Phone, 0, openGoneMoodset},
            {"picture", Library::Samples, Sizes::Usual, 1, openPicture},
            {"picture-large", Library::Samples, Sizes::Phone, 1, openPicture, {}, Text::Large},
            {"picture-broken", Library::Samples, Sizes::Phone, 1, openBrokenPicture},
            {"address", Library::Samples, Sizes::Phone, 0, openAddress},
            {"address-waiting", Library::Samples, Sizes::Phone, 0, openWaitingAddress},
            {"address-broken", Library::Samples, Sizes::Phone, 0, openBrokenAddress},
            {"add", Library::Samples, Sizes::Usual, 0, openAdd},
            {"add-large", Library::Samples, Sizes::Phone, 0, openAdd, {}, Text::Large},
            {"folder", Library::Samples, Sizes::Usual, 0, openFolder},
            {"folder-of-bundles", Library::Samples, Sizes::Phone, 0, openFolderOfBundles},
            {"bundle", Library::Samples, Sizes::Usual, 0, openBundle},
            {"bundle-refused", Library::Samples, Sizes::Phone, 0, refuseBundle},
        };
    }

    static bool stay(PickerDisplay& /*display*/) { return true; }

    static bool tryAgain(PickerDisplay& display)
    {
        const QString name = QStringLiteral("moodsetsError");
        if (!display.waitFor(name)) {
            return false;
        }
        const QString fault = QStringLiteral("cannot be read");
        // Nobody tells the app that the file has changed.
        const bool isSeen =
            QMetaObject::invokeMethod(display.find(name), "triggered")
            && QTest::qWaitFor(
                [&] { return display.find(name)->property("detail").toString().endsWith(fault); },
                DeadlineMs)
            && QTest::qWaitFor(
                [&] { return !display.engine().notices().text().isEmpty(); }, DeadlineMs);
        display.engine().notices().clear();
        return isSeen;
    }

    /// As if a call had just come back. The notice goes by itself after a while.
    static bool tell(PickerDisplay& display, const QVariantMap& outcome)
    {
        constexpr int call = 0;
        display.engine().notices().finish(call, outcome);
        return display.waitFor(QStringLiteral("notice"));
    }

    static bool tellSuccess(PickerDisplay& display)
    {
        return tell(
            display,
            {{QStringLiteral("succeeded"), true},
             {QStringLiteral("method"), QStringLiteral("setMoodset")},
             {QStringLiteral("moodset"),
              QVariantMap{{QStringLiteral("name"), QStringLiteral("Coast light")}}},
             {QStringLiteral("undo"),
              QVariantMap{{QStringLiteral("method"), QStringLiteral("setMoodset")}}}});
    }

    static bool tellFailure(PickerDisplay& display)
    {
        return tell(
            display,
            {{QStringLiteral("succeeded"), false},
             {QStringLiteral("error"), int(Actions::NoDaemon)}});
    }

    static bool searchInVain(PickerDisplay& display)
    {
        return display.waitFor(QStringLiteral("search"))
            && display.find(QStringLiteral("search"))
                   ->setProperty("text", QStringLiteral("dragonfly"))
            && display.waitFor(QStringLiteral("noPictures"));
    }

    static bool openMoodset(PickerDisplay& display)
    {
        return display.openMoodset(ThemeSession::bundleFile(QStringLiteral("coast-light")))
            && display.waitFor(QStringLiteral("highlightColorMend"));
    }

    static bool editColor(PickerDisplay& display)
    {
        return openMoodset(display) && display.press(QStringLiteral("highlightColor"))
            && display.waitFor(QStringLiteral("candidate0"));
    }

    static bool openShells(PickerDisplay& display)
    {
        return openMoodset(display) && display.waitFor(QStringLiteral("shell"));
    }

    static bool openGoneMoodset(PickerDisplay& display)
    {
        constexpr qlonglong noId = 1000000;
        display.call("openMoodset", noId);
        return display.waitFor(QStringLiteral("gone"));
    }

    static bool openText(PickerDisplay& display, const QString& text)
    {
        display.call("openText", text);
        return display.waitFor(QStringLiteral("picturePage"));
    }

    static bool openPicture(PickerDisplay& display)
    {
        return openText(
                   display, PickerDisplay::picturesFolder() + QStringLiteral("/desert-evening.jpg"))
            && display.waitFor(QStringLiteral("homePreview"));
    }

    static bool waitForFault(PickerDisplay& display)
    {
        const QString name = QStringLiteral("pictureFault");
        return display.waitFor(name)
            && QTest::qWaitFor(
                   [&] { return !display.find(name)->property("waiting").toBool(); }, DeadlineMs);
    }

    static bool openBrokenPicture(PickerDisplay& display)
    {
        const QString path = PickerDisplay::picturesFolder() + QStringLiteral("/holiday.jpg");
        const bool isOpen = InstalledBundles::write(path, "These are words.")
            && openText(display, path) && waitForFault(display);
        return QFile::remove(path) && isOpen;
    }

    static bool openAddress(PickerDisplay& display)
    {
        QImage picture(80, 60, QImage::Format_RGB32);
        picture.fill(Qt::green);
        display.server.answer(QStringLiteral("/harbour.jpg"), encodedPicture(picture, "jpg"));
        return openText(display, display.server.url(QStringLiteral("/harbour.jpg")).toString())
            && display.waitFor(QStringLiteral("setPicture"))
            && QTest::qWaitFor(
                   [&] { return display.find(QStringLiteral("setPicture"))->isEnabled(); },
                   DeadlineMs);
    }

    static bool openWaitingAddress(PickerDisplay& display)
    {
        const QString path = QStringLiteral("/slow.jpg");
        display.server.answer(path, QByteArray(1, 'x'));
        display.server.hold(path);
        return openText(display, display.server.url(path).toString());
    }

    static bool openBrokenAddress(PickerDisplay& display)
    {
        return openText(display, display.server.url(QStringLiteral("/missing.jpg")).toString())
            && waitForFault(display);
    }

    static bool openAdd(PickerDisplay& display)
    {
        return display.press(QStringLiteral("add")) && display.waitFor(QStringLiteral("addPage"));
    }

    static bool showFolder(PickerDisplay& display, const QString& path)
    {
        return display.waitFor(QStringLiteral("folderPage"))
            && display.find(QStringLiteral("folderPage"))
                   ->setProperty("folder", QUrl::fromLocalFile(path))
            && QTest::qWaitFor(
                   [&] {
                       return display.find(QStringLiteral("files"))->property("count").toInt() > 0;
                   },
                   DeadlineMs);
    }

    static bool openFolder(PickerDisplay& display)
    {
        display.call("browse", false);
        return showFolder(display, PickerDisplay::picturesFolder());
    }

    static bool openFolderOfBundles(PickerDisplay& display)
    {
        display.call("browse", true);
        return showFolder(display, QStringLiteral("/usr/share/moodset"));
    }

    static bool openBundle(PickerDisplay& display)
    {
        display.call("openText", QStringLiteral("/usr/share/moodset/first-snow"));
        return display.waitFor(QStringLiteral("install"));
    }

    static bool refuseBundle(PickerDisplay& display)
    {
        const QString folder = QDir::homePath() + QStringLiteral("/harbour");
        if (!InstalledBundles::write(
                folder + QStringLiteral("/harbour.moodset"),
                R"({"version": 2, "displayName": 7})")) {
            return false;
        }
        display.call("openText", folder);
        const bool isRefused = display.press(QStringLiteral("install"))
            && display.waitFor(QStringLiteral("fault"))
            && display.waitFor(QStringLiteral("notice"));
        // It goes by itself after a while.
        display.engine().notices().clear();
        return isRefused;
    }

    /// Each size and theme of a scene. Texts that are larger or mirrored, and the largest screen,
    /// are seen in one theme.
    static std::vector<std::pair<QSize, bool>> variants(const Scene& scene)
    {
        std::vector<std::pair<QSize, bool>> all;
        for (const QSize size : {Phone, Laptop, Screen, LargeScreen}) {
            for (const bool isDark : {true, false}) {
                const bool isSize = size == Phone
                    || (size == LargeScreen ? scene.sizes == Sizes::All && isDark
                                            : scene.sizes != Sizes::Phone);
                if (isSize && (!isDark || scene.text == Text::Usual)) {
                    all.emplace_back(size, isDark);
                }
            }
        }
        return all;
    }

    static QString fileName(const Scene& scene, QSize size, bool isDark)
    {
        return QStringLiteral("%1-%2x%3-%4.png")
            .arg(QLatin1String(scene.name))
            .arg(size.width())
            .arg(size.height())
            .arg(isDark ? QLatin1String("dark") : QLatin1String("light"));
    }

    /// Where they differ, for the one who looks for the reason.
    static QString difference(const QImage& seen, const QImage& expected)
    {
        if (seen.size() != expected.size()) {
            return QStringLiteral("it is %1 x %2").arg(seen.width()).arg(seen.height());
        }
        int count = 0;
        QRect where;
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (seen.pixel(x, y) != expected.pixel(x, y)) {
                    ++count;
                    where |= QRect(x, y, 1, 1);
                }
            }
        }
        return QStringLiteral("%1 pixels differ, between (%2, %3) and (%4, %5)")
            .arg(count)
            .arg(where.left())
            .arg(where.top())
            .arg(where.right())
            .arg(where.bottom());
    }

    /// The same picture with a palette, if that has room for its colours.
    static QImage packed(const QImage& picture)
    {
        constexpr int largest = 256;
        QHash<QRgb, int> numbers;
        QImage packed(picture.size(), QImage::Format_Indexed8);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb color = picture.pixel(x, y);
                const auto number = numbers.insert(color, numbers.value(color, numbers.size()));
                if (*number >= largest) {
                    return picture;
                }
                packed.scanLine(y)[x] = uchar(*number);
            }
        }
        QVector<QRgb> colors(numbers.size());
        for (auto number = numbers.cbegin(); number != numbers.cend(); ++number) {
            colors[*number] = number.key();
        }
        packed.setColorTable(colors);
        return packed;
    }

    static bool save(const QImage& picture, const QString& path)
    {
        constexpr int smallest = 0;
        return packed(picture).save(path, "png", smallest);
    }

    bool bringTo(Library library)
    {
        while (m_library < library) {
            m_library = Library(int(m_library) + 1);
            const bool isThere = m_library == Library::Damaged ? m_display->damageLibrary()
                : m_library == Library::Empty
                ? QFile::remove(LibraryDatabase::standardPath()) && m_display->startDaemon()
                : m_display->addSamples();
            if (!isThere) {
                return false;
            }
        }
        return true;
    }

    void show(Text text)
    {
        constexpr int usual = 15;
        m_display->setText(
            text == Text::Large ? 2 * usual : usual,
            text == Text::RightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    }

    /// What the scene shows at this moment.
    QImage shown(const Scene& scene) const
    {
        const bool isThere = (!scene.isPassing || scene.open(*m_display))
            && (scene.top.isEmpty() || m_display->scrollTo(scene.top));
        return isThere ? m_display->shown() : QImage();
    }

    bool isStill(const Scene& scene)
    {
        const QImage before = shown(scene);
        QTest::qWait(StillMs);
        return m_display->isSettled() && shown(scene) == before;
    }

    static constexpr int DeadlineMs = 20000;
    static constexpr int StillMs = 150;

    const QString m_target = qEnvironmentVariable("PICTURES_TO");
    std::unique_ptr<PickerDisplay> m_display;
    Library m_library = Library::None;

private Q_SLOTS:
    void initTestCase()
    {
        m_display = std::make_unique<PickerDisplay>();
        QVERIFY(m_display->open());
    }

    void cleanupTestCase() { m_display.reset(); }

    void looksLikeItsPicture_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isDark");
        const std::vector<Scene> all = scenes();
        for (size_t number = 0; number < all.size(); ++number) {
            for (const auto& [size, isDark] : variants(all[number])) {
                QTest::newRow(qPrintable(fileName(all[number], size, isDark)))
                    << int(number) << size << isDark;
            }
        }
    }

    void looksLikeItsPicture()
    {
        QFETCH(const int, number);
        QFETCH(const QSize, size);
        QFETCH(const bool, isDark);
        const Scene scene = scenes().at(size_t(number));
        QVERIFY(bringTo(scene.library));
        QVERIFY(m_display->setDark(isDark));
        QVERIFY(m_display->resize(size));
        m_display->engine().notices().clear();
        show(scene.text);
        m_display->call("showTab", scene.tab);
        QVERIFY(scene.open(*m_display));
        QVERIFY(QTest::qWaitFor([this] { return m_display->isSettled(); }, DeadlineMs));

        const QString name = fileName(scene, size, isDark);
        if (!m_target.isEmpty()) {
            QVERIFY(QTest::qWaitFor([&] { return isStill(scene); }, DeadlineMs));
            QVERIFY(save(shown(scene), m_target + QLatin1Char('/') + name));
            return;
        }
        const QImage expected =
            QImage(QStringLiteral(PICTURES "/") + name).convertToFormat(QImage::Format_RGB888);
        QImage seen;
        const bool isSame = QTest::qWaitFor(
            [&] {
                seen = shown(scene);
                return seen == expected;
            },
            DeadlineMs);
        QVERIFY2(isSame, qPrintable(difference(seen, expected)));
    }

    void standsStillWhereMotionIsReduced()
    {
        QVERIFY(bringTo(Library::Samples));
        QVERIFY(m_display->resize(Phone));
        m_display->call("showTab", 0);
        QVERIFY(openWaitingAddress(*m_display));
        const auto isChanging = [this] {
            const QImage before = m_display->shown();
            QTest::qWait(StillMs);
            return m_display->shown() != before;
        };
        QVERIFY(m_display->setMotion(true));
        QVERIFY(QTest::qWaitFor(isChanging, DeadlineMs));
        QVERIFY(m_display->setMotion(false));
        QVERIFY(QTest::qWaitFor([&] { return !isChanging(); }, DeadlineMs));
        constexpr int looks = 5;
        for (int look = 0; look < looks; ++look) {
            QVERIFY(!isChanging());
        }
    }

    void hasNoOtherPictures()
    {
        QStringList expected;
        for (const Scene& scene : scenes()) {
            for (const auto& [size, isDark] : variants(scene)) {
                expected << fileName(scene, size, isDark);
            }
        }
        expected.sort();
        const QDir folder(m_target.isEmpty() ? QStringLiteral(PICTURES) : m_target);
        QCOMPARE(folder.entryList(QDir::Files, QDir::Name), expected);
    }
};

int main(int argc, char** argv)
{
    QGuiApplication application(argc, argv);
    PickerLookTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pickerlook.moc"
