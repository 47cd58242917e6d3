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

/// A service of the outside, played on a connection and in a thread of its own, so that it answers
/// even while the test's thread waits for it, and notes what it is asked.
///
///     PlayedService store(QDBusConnection::SessionBus, "com.example.store");
///     store.answer("price", {5});
///     QVERIFY(store.appear());
///     ...
///     QCOMPARE(store.takeCalls(), QStringList("price(\"apple\")"));
///
/// It answers calls of all paths and interfaces by the method's name: with what it has been told to
/// answer, or else with the bus's error for an unknown method. The functions belong to the test's
/// thread, and may be called at any time, also while it is not on the bus.
class PlayedService
{
public:
    PlayedService(QDBusConnection::BusType bus, const QString& name);
    ~PlayedService();
    Q_DISABLE_COPY_MOVE(PlayedService)

    /// Takes the name on the bus. Returns false if it cannot.
    Q_REQUIRED_RESULT bool appear();
    /// Leaves the bus as a process that has died does: the bus answers what is open with an error.
    void vanish();

    /// Answers a method with these values.
    void answer(const QString& method, const QVariantList& values);
    /// Answers a method as the function says, which runs in the service's thread. A message of no
    /// type is no answer.
    void answer(const QString& method, std::function<QDBusMessage(const QDBusMessage&)> answer);
    /// Answers a method with an error.
    void answerWithError(const QString& method, const QString& name, const QString& text);
    /// Takes a method's calls, and leaves them open until answerOpenCalls().
    void answerLater(const QString& method);
    /// Answers all open calls with these values.
    void answerOpenCalls(const QVariantList& values);

    /// Sends a signal from the service. When this returns, the bus has passed it on: whatever is
    /// sent later, by whomever, arrives later.
    void send(
        const QString& path, const QString& interface, const QString& signal,
        const QVariantList& values);

    /// The calls since the last time, oldest first, as text: `method("text", 5)`. All that this
    /// process has called on its own connection to the bus is among them.
    QStringList takeCalls();
    /// Waits, with the event loop turning, until there are as many calls to take.
    Q_REQUIRED_RESULT bool waitForCalls(int count);

private:
    [[nodiscard]] QDBusConnection testConnection() const;
    void runInThread(const std::function<void()>& function);

    const QDBusConnection::BusType m_bus;
    const QString m_name;
    QThread m_thread;
    std::unique_ptr<PlayedServiceObject> m_object;
    QString m_connectionName;
};
