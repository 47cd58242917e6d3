// SPDX-License-Identifier: BSD-3-Clause
#include "pickersession.h"

#include "themekeys.h"

#include <QQmlEngine>
#include <QQmlError>
#include <QSignalSpy>

#include <utility>

PickerSession::PickerSession()
{
    QObject::connect(
        &m_engine.engine(), &QQmlEngine::warnings, &server, [this](const QList<QQmlError>& errors) {
            for (const QQmlError& error : errors) {
                m_qmlWarnings.append(error.toString());
            }
        });
}

PickerSession::~PickerSession()
{
    if (!verifyNoWarnings()) {
        QTest::qFail("Stray warnings", __FILE__, __LINE__);
    }
}

bool PickerSession::open()
{
    if (!m_engine.show()) {
        return false;
    }
    m_window = std::make_unique<PickerWindow>(m_engine.window());
    m_window->resize(Tablet);
    return QTest::qWaitForWindowActive(m_engine.window(), DaemonProcess::deadlineMs)
        && QTest::qWaitFor(
               [this] { return m_engine.content() != nullptr; }, DaemonProcess::deadlineMs);
}

bool PickerSession::goHome()
{
    m_window->press(Qt::Key_1, Qt::ControlModifier);
    const bool isHome = m_window->waitForPage(QStringLiteral("tabs"))
        && m_window->waitFor(QStringLiteral("moodsets"));
    forgetNotice();
    return isHome;
}

bool PickerSession::openMoodset(const QString& name)
{
    return goHome() && m_window->tap(name) && m_window->waitForPage(QStringLiteral("moodsetPage"))
        && m_window->waitFor(QStringLiteral("name"));
}

QString PickerSession::notice() const
{
    QQuickItem* const bar = m_window->find(QStringLiteral("notice"));
    return bar != nullptr ? PickerWindow::nameOf(bar) : QString();
}

QString PickerSession::noticeAfter(const QString& control)
{
    const QSignalSpy changes(&m_engine.notices(), &Notices::noticeChanged);
    if (!m_window->tap(control)) {
        return {};
    }
    const bool isNew = QTest::qWaitFor(
        [&] { return !changes.isEmpty() && !notice().isEmpty(); }, DaemonProcess::deadlineMs);
    return isNew ? notice() : QString();
}

QString PickerSession::nextNotice() const
{
    return m_window->waitFor(QStringLiteral("notice")) ? notice() : QString();
}

bool PickerSession::verifyNoWarnings()
{
    QStringList strays = std::exchange(m_qmlWarnings, {});
    strays += user.daemon.takeWarnings();
    if (!strays.isEmpty()) {
        qWarning().noquote() << "Stray warnings:\n   " << strays.join(QStringLiteral("\n    "));
    }
    return strays.isEmpty();
}

void PickerSession::setNetworkTimeout(int timeout)
{
    auto* const actions =
        m_engine.engine().singletonInstance<QObject*>(qmlTypeId("Moodset", 1, 0, "Actions"));
    actions->setProperty("networkTimeout", timeout);
}

QString PickerSession::activeMoodset()
{
    const QString value = UserStore::value(ThemeKeys::ActiveMoodset);
    return value.mid(1, value.size() - 2);
}
