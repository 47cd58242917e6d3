// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QStringList>
#include <QThread>
#include <QVariantList>

#include <functional>
#include <memory>

class PlayedServiceObject;

/// A service of another program, played on its own connection and thread, so that it answers even
/// while the test's thread is waiting for it. It records the calls.
///
///     PlayedService store(QDBusConnection::SessionBus, "com.example.store");
///     store.answer("price", {5});
///     QVERIFY(store.appear());
///     ...
///     QCOMPARE(store.takeCalls(), QStringList("price(\"apple\")"));
///
/// It answers calls for all paths and interfaces, by the name of the method: with the answer that
/// was set, or with the bus's error for an unknown method. Call the functions on the test's thread,
/// at any time, even while the service is not on the bus.
class PlayedService
{
public:
    PlayedService(QDBusConnection::BusType bus, const QString& name);
    ~PlayedService();
    Q_DISABLE_COPY_MOVE(PlayedService)

    /// Takes the name on the bus. Returns false on failure.
    Q_REQUIRED_RESULT bool appear();
    /// Leaves the bus as a dead process does: the bus answers all open calls with an error.
    void vanish();

    /// Answers a method with these values.
    void answer(const QString& method, const QVariantList& values);
    /// Answers a method with the result of the function, which runs on the service's thread. A
    /// message without a type means that there is no answer.
    void answer(const QString& method, std::function<QDBusMessage(const QDBusMessage&)> answer);
    /// Answers a method with an error.
    void answerWithError(const QString& method, const QString& name, const QString& text);
    /// Keeps the calls of a method open until answerOpenCalls().
    void answerLater(const QString& method);
    /// Answers all open calls with these values.
    void answerOpenCalls(const QVariantList& values);

    /// Sends a signal from the service. When this returns, the bus has passed the signal on, so
    /// later messages arrive later.
    void send(
        const QString& path, const QString& interface, const QString& signal,
        const QVariantList& values);

    /// The calls since the last time, in their order, as text: `method("text", 5)`. This includes
    /// all calls that this process has made on its own connection to the bus.
    QStringList takeCalls();
    /// Waits until there are this many calls to take. The event loop runs during this time.
    Q_REQUIRED_RESULT bool waitForCalls(int count);

private:
    QDBusConnection testConnection() const;
    void runInThread(const std::function<void()>& function);

    const QDBusConnection::BusType m_bus;
    const QString m_name;
    QThread m_thread;
    std::unique_ptr<PlayedServiceObject> m_object;
    QString m_connectionName;
};
