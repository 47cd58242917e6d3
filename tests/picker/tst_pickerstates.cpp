// SPDX-License-Identifier: BSD-3-Clause
#include "pickersession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Lies in the place of the library, and keeps everyone waiting who opens it.
class SlowLibrary
{
public:
    SlowLibrary()
        : m_path(QFile::encodeName(LibraryDatabase::standardPath()))
    {
        if (QDir().mkpath(QFileInfo(LibraryDatabase::standardPath()).path())
            && mkfifo(m_path.constData(), S_IRUSR | S_IWUSR) == 0) {
            m_handle = open(m_path.constData(), O_PATH | O_CLOEXEC);
        }
    }
    ~SlowLibrary()
    {
        remove();
        letGo();
        close(m_handle);
    }
    Q_DISABLE_COPY_MOVE(SlowLibrary)

    bool isValid() const { return m_handle != -1; }

    /// Nobody can open it any more.
    void remove() const { unlink(m_path.constData()); }
    /// Those who wait for it, if any, find that it is no library.
    void letGo() const
    {
        const QByteArray path = "/proc/self/fd/" + QByteArray::number(m_handle);
        const int writer = open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (writer != -1) {
            close(writer);
        }
    }

private:
    const QByteArray m_path;
    int m_handle = -1;
};

} // namespace

/// What the app shows where it has nothing to list, from its start without a library to its first
/// pictures. Each function goes on from the one before.
class PickerStatesTest : public QObject
{
    Q_OBJECT

private:
    PickerWindow& window() { return m_session->window(); }
    bool showPictures()
    {
        window().press(Qt::Key_2, Qt::ControlModifier);
        return window().waitFor(QStringLiteral("search"));
    }

    std::unique_ptr<PickerSession> m_session;
    std::unique_ptr<SlowLibrary> m_library;

private Q_SLOTS:
    void initTestCase()
    {
        m_session = std::make_unique<PickerSession>();
        m_library = std::make_unique<SlowLibrary>();
        QVERIFY(m_library->isValid());
        QVERIFY(m_session->open());
    }

    void cleanup() { QVERIFY(m_session->verifyNoWarnings()); }

    void cleanupTestCase()
    {
        // Whoever waits for the library must not wait any more when the app ends.
        m_library.reset();
        m_session.reset();
    }

    void saysThatItIsLooking()
    {
        QVERIFY(window().waitFor(QStringLiteral("Looking for your moodsets …")));
        QVERIFY(window().waitFor(QStringLiteral("Please wait")));
        QVERIFY(showPictures());
        QVERIFY(window().waitFor(QStringLiteral("Looking for your pictures …")));
        QVERIFY(window().waitFor(QStringLiteral("Please wait")));
    }

    void saysWhatCannotBeRead()
    {
        m_library->remove();
        QVERIFY(QTest::qWaitFor(
            [this] {
                m_library->letGo();
                return window().shows(QStringLiteral("Your pictures cannot be read"));
            },
            DaemonProcess::deadlineMs));
        QVERIFY(m_session->goHome());
        QVERIFY(window().waitFor(QStringLiteral("Your moodsets cannot be read")));

        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("Try again")),
            QStringLiteral("The theme service does not answer. Nothing has been changed."));
        QVERIFY(window().waitFor(
            QStringLiteral("There is no database at ") + LibraryDatabase::standardPath()));
        QVERIFY(showPictures());
        QVERIFY(window().tap(QStringLiteral("Try again")));
        QVERIFY(window().waitFor(QStringLiteral("Your pictures cannot be read")));
    }

    void saysHowToBegin()
    {
        QVERIFY(m_session->user.startOnBus());
        QVERIFY(window().waitFor(QStringLiteral("No pictures yet")));
        QVERIFY(m_session->goHome());
        QVERIFY(window().waitFor(QStringLiteral("No moodsets yet")));
        QVERIFY(window().tap(QStringLiteral("Add a moodset")));
        QVERIFY(window().waitForPage(QStringLiteral("addPage")));
    }

    void showsWhatComes()
    {
        const QString picture = m_session->user.folders.picture(QStringLiteral("first.png"));
        QVERIFY(showPictures());
        QVERIFY(ThemeSession::writePicture(picture));
        QVERIFY(window().waitFor(QStringLiteral("first.png")));
        QVERIFY(!window().shows(QStringLiteral("No pictures yet")));

        QVERIFY(m_session->goHome());
        QVERIFY(ThemeSession::create(picture));
        QVERIFY(window().waitFor(QStringLiteral("Apply first")));
        QVERIFY(!window().shows(QStringLiteral("No moodsets yet")));
    }

    void keepsWhatItShowsWhenTheDaemonEnds()
    {
        QVERIFY(m_session->user.daemon.terminate());
        QCOMPARE(
            m_session->noticeAfter(QStringLiteral("Apply first")),
            QStringLiteral("The theme service does not answer. Nothing has been changed."));
        QVERIFY(window().shows(QStringLiteral("Apply first")));
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerStatesTest>(argc, argv);
}

#include "tst_pickerstates.moc"
