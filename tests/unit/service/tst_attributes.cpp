// SPDX-License-Identifier: BSD-3-Clause
#include "service/attributes.h"

#include "messagelog.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTest>

namespace {

using Dictionary = QVector<QPair<QVariant, QVariant>>;

const QLatin1String Path("/attributes");
const QLatin1String Interface("org.example.Attributes");

/// A dictionary in the given order, as a client in any language sends it. The types are those of
/// the keys and values; QDBusVariant means "v".
QVariant dictionary(int keyType, int valueType, const Dictionary& entries)
{
    QDBusArgument argument;
    argument.beginMap(keyType, valueType);
    for (const auto& entry : entries) {
        argument.beginMapEntry();
        argument.appendVariant(entry.first);
        argument.appendVariant(entry.second);
        argument.endMapEntry();
    }
    argument.endMap();
    return QVariant::fromValue(argument);
}

QVariant list(int type, const QVariantList& elements)
{
    QDBusArgument argument;
    argument.beginArray(type);
    for (const QVariant& element : elements) {
        argument.appendVariant(element);
    }
    argument.endArray();
    return QVariant::fromValue(argument);
}

QVariant numberAndText()
{
    QDBusArgument argument;
    argument.beginStructure();
    argument << 1 << QStringLiteral("a");
    argument.endStructure();
    return QVariant::fromValue(argument);
}

/// A value of type "v".
QVariant variant(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

int variantType()
{
    return qMetaTypeId<QDBusVariant>();
}

QVariant text(const char* value)
{
    return QString::fromLatin1(value);
}

} // namespace

/// Replaces the daemon on the bus, and records the arguments of a call.
class Receiver : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.example.Attributes")

public:
    QVariantMap attributes;

public Q_SLOTS:
    void take(const QVariantMap& sent) { attributes = plainAttributes(sent); }
};

/// Sends values over a real bus, from one connection to another, because only then they have the
/// forms that the daemon receives.
class AttributesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_server.isConnected());
        QVERIFY(m_client.isConnected());
        QVERIFY(m_server.registerObject(Path, &m_receiver, QDBusConnection::ExportAllSlots));
    }

    void cleanupTestCase()
    {
        QDBusConnection::disconnectFromBus(m_server.name());
        QDBusConnection::disconnectFromBus(m_client.name());
    }

    void init() { m_receiver.attributes.clear(); }

    void shape_data()
    {
        QTest::addColumn<QVariant>("sent");
        QTest::addColumn<QVariant>("received");
        constexpr int string = QMetaType::QString;
        constexpr int integer = QMetaType::Int;
        const QVariant emptyMap = QVariantMap();

        QTest::newRow("s") << text("a") << text("a");
        QTest::newRow("i") << QVariant(7) << QVariant(7);
        QTest::newRow("b") << QVariant(true) << QVariant(true);
        QTest::newRow("d") << QVariant(0.5) << QVariant(0.5);
        QTest::newRow("x") << QVariant(Q_INT64_C(-5000000000)) << QVariant(Q_INT64_C(-5000000000));
        QTest::newRow("as") << QVariant(QStringList({QStringLiteral("a"), QStringLiteral("b")}))
                            << QVariant(QStringList({QStringLiteral("a"), QStringLiteral("b")}));
        QTest::newRow("ay") << QVariant(QByteArray("\0ab", 3)) << QVariant(QByteArray("\0ab", 3));
        QTest::newRow("a{sv}") << dictionary(
            string, variantType(), {{text("a"), variant(1)}, {text("b"), variant(text("c"))}})
                               << QVariant(QVariantMap(
                                      {{QStringLiteral("a"), 1},
                                       {QStringLiteral("b"), text("c")}}));
        QTest::newRow("a{ss}")
            << dictionary(string, string, {{text("a"), text("b")}, {text("c"), text("")}})
            << QVariant(QVariantMap(
                   {{QStringLiteral("a"), text("b")}, {QStringLiteral("c"), text("")}}));
        QTest::newRow("a{si}") << dictionary(string, integer, {{text("a"), 1}})
                               << QVariant(QVariantMap({{QStringLiteral("a"), 1}}));
        QTest::newRow("a{is}") << dictionary(integer, string, {{1, text("a")}, {-2, text("b")}})
                               << QVariant(QVariantMap(
                                      {{QStringLiteral("1"), text("a")},
                                       {QStringLiteral("-2"), text("b")}}));
        QTest::newRow("av") << list(variantType(), {variant(1), variant(text("a"))}) << emptyMap;
        QTest::newRow("ai") << list(integer, {1, 2}) << emptyMap;
        QTest::newRow("(is)") << numberAndText() << emptyMap;

        QTest::newRow("empty s") << text("") << text("");
        QTest::newRow("empty as") << QVariant(QStringList()) << QVariant(QStringList());
        QTest::newRow("empty ay") << QVariant(QByteArray("")) << QVariant(QByteArray(""));
        QTest::newRow("empty a{sv}") << dictionary(string, variantType(), {}) << emptyMap;
        QTest::newRow("empty a{ss}") << dictionary(string, string, {}) << emptyMap;
        QTest::newRow("empty a{si}") << dictionary(string, integer, {}) << emptyMap;
        QTest::newRow("empty a{is}") << dictionary(integer, string, {}) << emptyMap;
        QTest::newRow("empty av") << list(variantType(), {}) << emptyMap;
        QTest::newRow("empty ai") << list(integer, {}) << emptyMap;
    }

    void valueArrivesPlain_data() { shape_data(); }
    void valueArrivesPlain()
    {
        QFETCH(QVariant, sent);
        QFETCH(QVariant, received);

        send({{QStringLiteral("key"), sent}, {QStringLiteral("next"), 1}});

        QCOMPARE(m_receiver.attributes.size(), 2);
        const QVariant value = m_receiver.attributes.value(QStringLiteral("key"));
        QCOMPARE(value.userType(), received.userType());
        QCOMPARE(value, received);
        QCOMPARE(m_receiver.attributes.value(QStringLiteral("next")), QVariant(1));
    }

    void valueInAMapArrivesPlain_data() { shape_data(); }
    void valueInAMapArrivesPlain()
    {
        QFETCH(QVariant, sent);
        QFETCH(QVariant, received);
        const QVariant map = dictionary(
            QMetaType::QString, variantType(),
            {{text("inner"), variant(sent)}, {text("next"), variant(1)}});

        send({{QStringLiteral("key"), map}});

        const QVariant value = m_receiver.attributes.value(QStringLiteral("key"));
        QCOMPARE(value.userType(), int(QMetaType::QVariantMap));
        QCOMPARE(value.toMap().size(), 2);
        const QVariant inner = value.toMap().value(QStringLiteral("inner"));
        QCOMPARE(inner.userType(), received.userType());
        QCOMPARE(inner, received);
        QCOMPARE(value.toMap().value(QStringLiteral("next")), QVariant(1));
    }

    void mapsArrivePlainAtAnyDepth()
    {
        QVariant sent =
            dictionary(QMetaType::QString, QMetaType::QString, {{text("a"), text("b")}});
        QVariant received = QVariantMap({{QStringLiteral("a"), text("b")}});
        for (int depth = 0; depth < 10; ++depth) {
            sent = dictionary(QMetaType::QString, variantType(), {{text("m"), variant(sent)}});
            received = QVariantMap({{QStringLiteral("m"), received}});
        }

        send({{QStringLiteral("key"), sent}});

        QCOMPARE(m_receiver.attributes, QVariantMap({{QStringLiteral("key"), received}}));
    }

    void mapsInMapsNeedNoVariants()
    {
        using Inner = QMap<QString, QString>;
        const int innerType = qDBusRegisterMetaType<Inner>();
        const Inner inner{{QStringLiteral("url"), QStringLiteral("file:///a")}};
        QDBusArgument argument;
        argument.beginMap(QMetaType::QString, innerType);
        argument.beginMapEntry();
        argument << QStringLiteral("ringerToneFile") << inner;
        argument.endMapEntry();
        argument.endMap();

        send({{QStringLiteral("resources"), QVariant::fromValue(argument)}});

        const QVariantMap expected{
            {QStringLiteral("ringerToneFile"),
             QVariantMap({{QStringLiteral("url"), text("file:///a")}})}};
        QCOMPARE(m_receiver.attributes.value(QStringLiteral("resources")), QVariant(expected));
    }

    void listsInMapsNeedNoVariants()
    {
        const QVariant texts = dictionary(
            QMetaType::QString, QMetaType::QStringList,
            {{text("a"), QStringList({QStringLiteral("b"), QStringLiteral("c")})}});
        const int numbersType = qDBusRegisterMetaType<QList<int>>();
        QDBusArgument numbers;
        numbers.beginMap(QMetaType::QString, numbersType);
        numbers.beginMapEntry();
        numbers << QStringLiteral("a") << QList<int>({1, 2});
        numbers.endMapEntry();
        numbers.endMap();

        send(
            {{QStringLiteral("texts"), texts},
             {QStringLiteral("numbers"), QVariant::fromValue(numbers)}});

        const QVariantMap expected{
            {QStringLiteral("texts"),
             QVariantMap(
                 {{QStringLiteral("a"), QStringList({QStringLiteral("b"), QStringLiteral("c")})}})},
            {QStringLiteral("numbers"), QVariantMap({{QStringLiteral("a"), QVariantMap()}})}};
        QCOMPARE(m_receiver.attributes, expected);
    }

    void laterEntryOfAKeyWins()
    {
        const QVariant sent = dictionary(
            QMetaType::QString, variantType(),
            {{text("a"), variant(1)}, {text("b"), variant(2)}, {text("a"), variant(3)}});

        send({{QStringLiteral("key"), sent}});

        QCOMPARE(
            m_receiver.attributes.value(QStringLiteral("key")),
            QVariant(QVariantMap({{QStringLiteral("a"), 3}, {QStringLiteral("b"), 2}})));
    }

    void variantInAVariantStaysAsItIs()
    {
        send({{QStringLiteral("key"), variant(7)}});

        const QVariant value = m_receiver.attributes.value(QStringLiteral("key"));
        QCOMPARE(value.userType(), variantType());
        QCOMPARE(value.value<QDBusVariant>().variant(), QVariant(7));
    }

    void attributeThatIsTooLargeIsLeftOutWithAWarning_data()
    {
        QTest::addColumn<QVariant>("fitting");
        QTest::addColumn<QVariant>("tooLarge");
        // With the key, and 1 for each value, this is 64 KiB.
        constexpr int most = 64 * 1024 - 4;
        const QString longest(most, QLatin1Char('a'));
        const QString longer(most + 1, QLatin1Char('a'));
        const auto nested = [](const QString& value) {
            return dictionary(
                QMetaType::QString, variantType(),
                {{text("a"),
                  variant(
                      dictionary(QMetaType::QString, QMetaType::QString, {{text("b"), value}}))}});
        };
        QTest::newRow("s") << QVariant(longest) << QVariant(longer);
        QTest::newRow("ay") << QVariant(longest.toUtf8()) << QVariant(longer.toUtf8());
        QTest::newRow("as") << QVariant(QStringList(longest.left(most - 1)))
                            << QVariant(QStringList(longest));
        QStringList empty;
        for (int i = 0; i < most; ++i) {
            empty.append(QString());
        }
        QTest::newRow("as of empty texts") << QVariant(empty) << QVariant(empty << QString());
        QTest::newRow("a{sv}") << nested(longest.left(most - 4)) << nested(longest.left(most - 3));
        QTest::newRow("v in a variant")
            << variant(longest.left(most - 1)) << variant(QVariant(longest));
    }

    void attributeThatIsTooLargeIsLeftOutWithAWarning()
    {
        QFETCH(QVariant, fitting);
        QFETCH(QVariant, tooLarge);
        MessageLog log;

        send(
            {{QStringLiteral("fit"), fitting},
             {QStringLiteral("big"), tooLarge},
             {QStringLiteral("next"), 1}});

        QCOMPARE(
            log.takeWarnings(),
            QStringList(QStringLiteral("QVariantMap plainAttributes(const QVariantMap&) "
                                       "Attribute too large \"big\" 65537")));
        QCOMPARE(
            m_receiver.attributes.keys(),
            QStringList({QStringLiteral("fit"), QStringLiteral("next")}));
    }

    void attributeWithALongKeyIsLeftOutWithAWarning()
    {
        MessageLog log;

        send({{QString(64 * 1024, QLatin1Char('k')), 1}, {QStringLiteral("next"), 1}});

        QCOMPARE(
            log.takeWarnings(),
            QStringList(QStringLiteral("QVariantMap plainAttributes(const QVariantMap&) "
                                       "Attribute too large \"%1\" 65537")
                            .arg(QString(32, QLatin1Char('k')))));
        QCOMPARE(m_receiver.attributes.keys(), QStringList(QStringLiteral("next")));
    }

    void noAttributesAreAnEmptyMap()
    {
        m_receiver.attributes.insert(QStringLiteral("key"), 1);

        send({});

        QCOMPARE(m_receiver.attributes, QVariantMap());
    }

private:
    /// Calls the receiver with attributes and waits for its reply.
    void send(const QVariantMap& attributes)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            m_server.baseService(), Path, Interface, QStringLiteral("take"));
        message << attributes;
        const QDBusPendingCallWatcher call(m_client.asyncCall(message));
        QSignalSpy finished(&call, &QDBusPendingCallWatcher::finished);
        QVERIFY(finished.wait());
        QVERIFY2(!call.isError(), qPrintable(call.error().message()));
    }

    QDBusConnection m_server =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("server"));
    QDBusConnection m_client =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("client"));
    Receiver m_receiver;
};

QTEST_GUILESS_MAIN(AttributesTest)

#include "tst_attributes.moc"
