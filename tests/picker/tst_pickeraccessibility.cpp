// SPDX-License-Identifier: BSD-3-Clause
#include "accessibledesktop.h"
#include "themesession.h"

#include <QImage>
#include <QTest>

#include <memory>

/// What screen readers can say of the app. They use it here, too: all that is pressed is pressed
/// through their interface.
class PickerAccessibilityTest : public QObject
{
    Q_OBJECT

private:
    /// The controls without a name, each after the control before it. A control that goes away
    /// while it is asked seems to have no name.
    QStringList unnamed() const
    {
        QStringList unnamed;
        QString before;
        const QList<AccessibleDesktop::Control> controls = m_desktop->controls();
        for (const AccessibleDesktop::Control& control : controls) {
            if (control.name.trimmed().isEmpty()) {
                unnamed.append(QStringLiteral("%1 after \"%2\"").arg(control.role, before));
            }
            before = control.name;
        }
        return unnamed;
    }

    bool press(const QStringList& names) const
    {
        for (const QString& name : names) {
            if (!m_desktop->press(name)) {
                qWarning().noquote() << "there is nothing to press of the name" << name;
                return false;
            }
        }
        return true;
    }

    std::unique_ptr<ThemeSession> m_user;
    std::unique_ptr<AccessibleDesktop> m_desktop;

private Q_SLOTS:
    void initTestCase()
    {
        m_user = std::make_unique<ThemeSession>();
        QImage picture(64, 48, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        const QString path = m_user->folders.picture(QStringLiteral("sea.png"));
        QVERIFY(picture.save(path));
        QVERIFY(InstalledBundles::installSample(QStringLiteral("coast-light")));
        QVERIFY(m_user->startAtRest());
        QVERIFY(ThemeSession::create(path));
        // One of its colours is hard to read, so that there is a button that mends it.
        QVERIFY(
            m_user->edit(path, {{QStringLiteral("primaryColor"), QStringLiteral("#ff006060")}}));
        m_desktop = std::make_unique<AccessibleDesktop>();
        QVERIFY(m_desktop->start());
        QVERIFY(m_desktop->startApp(QStringLiteral(PICKER)));
    }

    void cleanupTestCase()
    {
        m_desktop.reset();
        m_user.reset();
    }

    void everyControlHasAName_data()
    {
        QTest::addColumn<QStringList>("way");
        QTest::addColumn<QString>("last");
        const QString back = QStringLiteral("Back");
        QTest::newRow("moodsets") << QStringList() << "Apply sea";
        QTest::newRow("a moodset") << QStringList({QStringLiteral("sea")}) << "Remove";
        QTest::newRow("its colours")
            << QStringList({QStringLiteral("Change the colour: Highlight")}) << "Opacity";
        QTest::newRow("its tones")
            << QStringList({QStringLiteral("Choose the tone: Ringtone")}) << "gull.ogg";
        QTest::newRow("a message") << QStringList({QStringLiteral("Make a favourite")}) << "Undo";
        QTest::newRow("a moodset of a bundle")
            << QStringList({back, QStringLiteral("Coast light")}) << "Play: Ringtone";
        QTest::newRow("ways to a new one")
            << QStringList({back, QStringLiteral("Add a moodset")}) << "Address of a picture";
        QTest::newRow("files") << QStringList({QStringLiteral("Choose a picture")}) << "sea.png";
        QTest::newRow("a picture") << QStringList({QStringLiteral("sea.png")}) << "Make it only";
        QTest::newRow("folders") << QStringList({back, back, QStringLiteral("Choose a folder")})
                                 << "Choose this folder";
        QTest::newRow("a bundle") << QStringList({QStringLiteral("Choose this folder")})
                                  << "Install";
        QTest::newRow("pictures") << QStringList({QStringLiteral("Pictures")})
                                  << "Search by folder, name or date";
    }

    // Each goes on from the page of the one before.
    void everyControlHasAName()
    {
        QFETCH(const QStringList, way);
        QFETCH(const QString, last);
        QVERIFY(press(way));
        QVERIFY2(m_desktop->waitFor(last), qPrintable(last + QStringLiteral(" has not come")));
        QTRY_COMPARE_WITH_TIMEOUT(unnamed(), QStringList(), DaemonProcess::deadlineMs);
    }
};

QTEST_GUILESS_MAIN(PickerAccessibilityTest)

#include "tst_pickeraccessibility.moc"
