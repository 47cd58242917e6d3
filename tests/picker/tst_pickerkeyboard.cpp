// SPDX-License-Identifier: BSD-3-Clause
#include "pickersession.h"

#include <QSignalSpy>
#include <QTest>

/// The app by keyboard alone, and with all from right to left.
class PickerKeyboardTest : public QObject
{
    Q_OBJECT

private:
    PickerWindow& window() { return m_session->window(); }
    QString path(const QString& name) const
    {
        return m_session->user.folders.picture(name + QStringLiteral(".png"));
    }
    QString column(const QString& name, const QString& column) const
    {
        return m_session->user.library().moodset(path(name), column).value(0);
    }

    /// What has the keyboard, by its name or else by what a screen reader says.
    QString focused()
    {
        QQuickItem* const item = window().focused();
        return item == nullptr             ? QString()
            : item->objectName().isEmpty() ? PickerWindow::nameOf(item)
                                           : item->objectName();
    }

    /// Whether what has the keyboard can be seen.
    bool isFocusInView()
    {
        QQuickItem* const item = window().focused();
        if (item == nullptr || !window().waitForRest(item)) {
            return false;
        }
        const QRectF place = PickerWindow::placeOf(item);
        for (QQuickItem* view = item->parentItem(); view != nullptr; view = view->parentItem()) {
            const QRectF part = PickerWindow::placeOf(view);
            if (view->clip()
                && (place.top() < part.top() - 1 || place.bottom() > part.bottom() + 1)) {
                return false;
            }
        }
        return true;
    }

    /// Presses Tab until a control has the keyboard.
    bool tabTo(const QString& name)
    {
        constexpr int most = 60;
        for (int i = 0; i < most && focused() != name; ++i) {
            window().press(Qt::Key_Tab);
        }
        if (focused() != name) {
            qWarning() << "Tab does not come to" << name;
        }
        return focused() == name;
    }

    std::unique_ptr<PickerSession> m_session;

private Q_SLOTS:
    void initTestCase()
    {
        m_session = std::make_unique<PickerSession>();
        for (const QString& name : {QStringLiteral("a"), QStringLiteral("b")}) {
            QVERIFY(ThemeSession::writePicture(path(name)));
        }
        QVERIFY(m_session->user.startAtRest());
        QVERIFY(ThemeSession::create(path(QStringLiteral("a"))));
        QVERIFY(ThemeSession::create(path(QStringLiteral("b"))));
        QVERIFY(m_session->open());
        QVERIFY(window().waitFor(QStringLiteral("Apply a")));
        QVERIFY(window().waitFor(QStringLiteral("Apply b")));
    }

    void init()
    {
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        window().resize(PickerSession::Phone);
        QVERIFY(m_session->goHome());
    }

    void cleanup() { QVERIFY(m_session->verifyNoWarnings()); }

    void cleanupTestCase() { m_session.reset(); }

    void opensAndAppliesAMoodset()
    {
        QQuickItem* const grid = window().find(QStringLiteral("moodsets"));
        grid->setProperty("currentIndex", 0);
        const QString first = focused();
        window().press(Qt::Key_Right);
        QTRY_VERIFY(focused() != first);
        const QString second = focused();
        window().press(Qt::Key_Return);
        QVERIFY(window().waitForPage(QStringLiteral("moodsetPage")));
        QVERIFY(window().waitFor(second));
        QVERIFY(tabTo(QStringLiteral("apply")));
        window().press(Qt::Key_Space);
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“%1” is active.").arg(second));

        window().press(Qt::Key_Escape);
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
    }

    void appliesAMoodsetFromTheList()
    {
        const QString other =
            window().shows(QStringLiteral("Apply a")) ? QStringLiteral("a") : QStringLiteral("b");
        QVERIFY(tabTo(QStringLiteral("Apply ") + other));
        m_session->forgetNotice();
        window().press(Qt::Key_Space);
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“%1” is active.").arg(other));
    }

    void reachesEveryControlOfAMoodset()
    {
        QVERIFY(m_session->openMoodset(QStringLiteral("a")));
        QVERIFY(tabTo(QStringLiteral("highlightColor")));
        window().press(Qt::Key_Space);
        QVERIFY(window().waitFor(QStringLiteral("Opacity")));
        QStringList reached;
        while (!reached.contains(focused())) {
            reached.append(focused());
            QVERIFY2(isFocusInView(), qPrintable(focused()));
            window().press(Qt::Key_Tab);
        }

        for (const QString& name :
             {QStringLiteral("Back"), QStringLiteral("favorite"), QStringLiteral("name"),
              QStringLiteral("primaryColor"), QStringLiteral("candidate0"), QStringLiteral("Hue"),
              QStringLiteral("Saturation"), QStringLiteral("Lightness"), QStringLiteral("Opacity"),
              QStringLiteral("volume"), QStringLiteral("mailTone"),
              QStringLiteral("clockAlarmToneSwitch"), QStringLiteral("remove")}) {
            QVERIFY2(
                reached.contains(name),
                qPrintable(
                    name + QStringLiteral(" is not among ") + reached.join(QLatin1Char(' '))));
        }
    }

    void changesASliderAndASwitch()
    {
        QVERIFY(m_session->openMoodset(QStringLiteral("b")));
        QVERIFY(tabTo(QStringLiteral("volume")));
        const int before = column(QStringLiteral("b"), QStringLiteral("ringerVolume")).toInt();
        const int shown = window().focused()->property("value").toInt();
        window().press(shown > 50 ? Qt::Key_Left : Qt::Key_Right);
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“b” has been changed."));
        const int after = column(QStringLiteral("b"), QStringLiteral("ringerVolume")).toInt();
        QVERIFY(after != before);
        QCOMPARE(after, shown > 50 ? shown - 1 : shown + 1);

        QVERIFY(tabTo(QStringLiteral("chatToneSwitch")));
        const QString sounds = column(QStringLiteral("b"), QStringLiteral("enabledSounds"));
        m_session->forgetNotice();
        window().press(Qt::Key_Space);
        QCOMPARE(m_session->nextNotice(), QStringLiteral(u"“b” has been changed."));
        QVERIFY(column(QStringLiteral("b"), QStringLiteral("enabledSounds")) != sounds);
    }

    void savesASliderOnceWhenTheKeyIsReleased()
    {
        QVERIFY(m_session->openMoodset(QStringLiteral("b")));
        QVERIFY(tabTo(QStringLiteral("volume")));
        QQuickItem* const slider = window().focused();
        const int before = slider->property("value").toInt();
        const int step = before > 50 ? -1 : 1;
        const QSignalSpy saves(slider, SIGNAL(settled()));
        constexpr int repeats = 3;
        window().hold(step < 0 ? Qt::Key_Left : Qt::Key_Right, repeats);
        QCOMPARE(saves.count(), 1);
        QTRY_COMPARE(
            column(QStringLiteral("b"), QStringLiteral("ringerVolume")).toInt(),
            before + step * (1 + repeats));
    }

    void findsAPicture()
    {
        window().press(Qt::Key_F, Qt::ControlModifier);
        QTRY_COMPARE(focused(), QStringLiteral("search"));
        QVERIFY(window().waitFor(QStringLiteral("a.png")));
        window().type(QStringLiteral("b.png"));
        QVERIFY(window().waitUntilGone(QStringLiteral("a.png")));
        QVERIFY(tabTo(QStringLiteral("b.png")));
        window().press(Qt::Key_Return);
        QVERIFY(window().waitForPage(QStringLiteral("picturePage")));
        QVERIFY(window().waitFor(QStringLiteral("homePreview")));
        QVERIFY(tabTo(QStringLiteral("createPicture")));
        window().press(Qt::Key_Escape);
        QVERIFY(window().waitForPage(QStringLiteral("tabs")));
        window().press(Qt::Key_F, Qt::ControlModifier);
        window().press(Qt::Key_A, Qt::ControlModifier);
        window().press(Qt::Key_Delete);
    }

    void mirrorsThePages()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        QVERIFY(m_session->openMoodset(QStringLiteral("a")));
        const qreal middle = window().window()->width() / 2.0;
        const auto x = [this](const QString& name) {
            return PickerWindow::placeOf(window().find(name)).center().x();
        };
        QVERIFY(x(QStringLiteral("Back")) > middle);
        QVERIFY(x(QStringLiteral("favorite")) < middle);
        m_session->forgetNotice();
        QVERIFY(window().slide(QStringLiteral("volume"), 30));
        QVERIFY(!m_session->nextNotice().isEmpty());
        const int volume = column(QStringLiteral("a"), QStringLiteral("ringerVolume")).toInt();
        QVERIFY2(qAbs(volume - 30) <= 2, qPrintable(QString::number(volume)));

        constexpr QSize desktop(1280, 800);
        window().resize(desktop);
        QVERIFY(window().waitFor(QStringLiteral("picturesTab")));
        QVERIFY(window().waitForRest(window().find(QStringLiteral("picturesTab"))));
        QVERIFY(x(QStringLiteral("picturesTab")) > desktop.width() / 2.0);
        QVERIFY(x(QStringLiteral("homePreview")) > x(QStringLiteral("apply")));
    }

    void walksFromRightToLeft()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        window().resize(PickerSession::Tablet);
        QQuickItem* const grid = window().find(QStringLiteral("moodsets"));
        QVERIFY(window().waitForRest(grid));
        grid->setProperty("currentIndex", 0);
        const qreal start = PickerWindow::placeOf(window().focused()).center().x();
        window().press(Qt::Key_Left);
        QTRY_COMPARE(grid->property("currentIndex").toInt(), 1);
        QVERIFY(PickerWindow::placeOf(window().focused()).center().x() < start);
    }
};

int main(int argc, char** argv)
{
    return runPickerTest<PickerKeyboardTest>(argc, argv);
}

#include "tst_pickerkeyboard.moc"
