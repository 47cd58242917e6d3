// SPDX-License-Identifier: BSD-3-Clause
// Runs the tests of the QML module, which are written in QML, with a user and a daemon of their
// own.
#include "qmlmachine.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QtQuickTest>

#include <memory>

class Setup : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { m_machine = std::make_unique<QmlMachine>(); }

    void qmlEngineAvailable(QQmlEngine* engine)
    {
        engine->rootContext()->setContextProperty(QStringLiteral("machine"), m_machine.get());
        QObject::connect(
            engine, &QQmlEngine::warnings, m_machine.get(), &QmlMachine::noteQmlWarnings);
    }

    void cleanupTestCase() { m_machine.reset(); }

private:
    std::unique_ptr<QmlMachine> m_machine;
};

QUICK_TEST_MAIN_WITH_SETUP(moodset, Setup)

#include "qmltests.moc"
