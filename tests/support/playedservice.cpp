// SPDX-License-Identifier: BSD-3-Clause
#include "playedservice.h"

#include <QDBusConnectionInterface>
#include <QDBusVirtualObject>
#include <QDebug>
#include <QHash>
#include <QMutex>
#include <QTest>
#include <QVector>

namespace {

/// The name of a method that every service answers. Its reply shows that the service has received
/// all earlier calls.
const QLatin1String Fence("fence");

QString valueText(const QVariant& value)
{
    return value.userType() == QMetaType::QString
        ? QLatin1Char('"') + value.toString() + QLatin1Char('"')
        : value.toString();
}

QString callText(const QDBusMessage& call)
{
    QStringList values;
    const QVariantList arguments = call.arguments();
    for (const QVariant& value : arguments) {
        values.append(valueText(value));
    }
    return call.member() + QLatin1Char('(') + values.join(QLatin1String(", ")) + QLatin1Char(')');
}

} // namespace

/// Answers the calls. Everything except the texts of the calls belongs to the service's thread.
class PlayedServiceObject : public QDBusVirtualObject
{
    Q_OBJECT

public:
    using Answer = std::function<QDBusMessage(const QDBusMessage&)>;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (message.type() != QDBusMessage::MethodCallMessage) {
            return false;
        }
        if (message.member() == Fence) {
            return connection.send(message.createReply());
        }
        {
            const QMutexLocker locker(&m_mutex);
            m_calls.append(callText(message));
        }
        const auto answer = answers.constFind(message.member());
        if (answer == answers.constEnd()) {
            return false;
        }
        const QDBusMessage reply = (*answer)(message);
        if (reply.type() != QDBusMessage::InvalidMessage) {
            connection.send(reply);
        }
        return true;
    }

    QString introspect(const QString& path) const override
    {
        Q_UNUSED(path)
        return QString();
    }

    int callCount()
    {
        const QMutexLocker locker(&m_mutex);
        return m_calls.count();
    }

    QStringList takeCalls()
    {
        const QMutexLocker locker(&m_mutex);
        return std::exchange(m_calls, {});
    }

    QHash<QString, Answer> answers;
    QVector<QDBusMessage> openCalls;

private:
    QMutex m_mutex;
    QStringList m_calls;
};

PlayedService::PlayedService(QDBusConnection::BusType bus, const QString& name)
    : m_bus(bus)
    , m_name(name)
    , m_object(std::make_unique<PlayedServiceObject>())
{
    m_object->moveToThread(&m_thread);
    m_thread.start();
}

PlayedService::~PlayedService()
{
    vanish();
    m_thread.quit();
    m_thread.wait();
}

bool PlayedService::appear()
{
    static int count = 0;
    m_connectionName = QStringLiteral("played service %1").arg(++count);
    bool appeared = false;
    runInThread([&] {
        QDBusConnection connection = QDBusConnection::connectToBus(m_bus, m_connectionName);
        appeared = connection.registerVirtualObject(
                       QStringLiteral("/"), m_object.get(), QDBusConnection::SubPath)
            && connection.registerService(m_name);
    });
    return appeared;
}

void PlayedService::vanish()
{
    if (m_connectionName.isEmpty()) {
        return;
    }
    runInThread([this] {
        m_object->openCalls.clear();
        QDBusConnection(m_connectionName).unregisterObject(QStringLiteral("/"));
        QDBusConnection::disconnectFromBus(m_connectionName);
    });
    m_connectionName.clear();
}

void PlayedService::answer(const QString& method, const QVariantList& values)
{
    answer(method, [values](const QDBusMessage& call) { return call.createReply(values); });
}

void PlayedService::answer(
    const QString& method, std::function<QDBusMessage(const QDBusMessage&)> answer)
{
    runInThread([&] { m_object->answers.insert(method, std::move(answer)); });
}

void PlayedService::answerWithError(const QString& method, const QString& name, const QString& text)
{
    answer(method, [name, text](const QDBusMessage& call) {
        return call.createErrorReply(name, text);
    });
}

void PlayedService::answerLater(const QString& method)
{
    answer(method, [object = m_object.get()](const QDBusMessage& call) {
        object->openCalls.append(call);
        return QDBusMessage();
    });
}

void PlayedService::answerOpenCalls(const QVariantList& values)
{
    runInThread([&] {
        const QVector<QDBusMessage> calls = std::exchange(m_object->openCalls, {});
        for (const QDBusMessage& call : calls) {
            QDBusConnection(m_connectionName).send(call.createReply(values));
        }
    });
}

void PlayedService::send(
    const QString& path, const QString& interface, const QString& signal,
    const QVariantList& values)
{
    QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
    message.setArguments(values);
    const QDBusConnection connection(m_connectionName);
    connection.send(message);
    connection.interface()->call(QStringLiteral("GetId"));
}

QStringList PlayedService::takeCalls()
{
    if (!m_connectionName.isEmpty()) {
        testConnection().call(QDBusMessage::createMethodCall(
            QDBusConnection(m_connectionName).baseService(), QStringLiteral("/"), m_name, Fence));
    }
    return m_object->takeCalls();
}

bool PlayedService::waitForCalls(int count)
{
    return QTest::qWaitFor([&] { return m_object->callCount() >= count; });
}

QDBusConnection PlayedService::testConnection() const
{
    return m_bus == QDBusConnection::SystemBus ? QDBusConnection::systemBus()
                                               : QDBusConnection::sessionBus();
}

void PlayedService::runInThread(const std::function<void()>& function)
{
    QMetaObject::invokeMethod(m_object.get(), function, Qt::BlockingQueuedConnection);
}

#include "playedservice.moc"
