// SPDX-License-Identifier: BSD-3-Clause
#include "gvariantconversion.h"

#include <QColor>
#include <QTest>
#include <QUrl>

#include <limits>

namespace {

GVariantPointer parsed(const char* text)
{
    return takeGVariant(g_variant_parse(nullptr, text, nullptr, nullptr, nullptr));
}

QByteArray printed(const GVariantPointer& value)
{
    if (!value) {
        return "none";
    }
    char* const text = g_variant_print(value.get(), TRUE);
    const QByteArray bytes(text);
    g_free(text);
    return bytes;
}

} // namespace

class GVariantConversionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char* text, const QVariant& value) {
            QTest::newRow(text) << QByteArray(text) << value;
        };
        row("true", true);
        row("false", false);
        row("byte 0xff", 255U);
        row("int16 -32768", -32768);
        row("uint16 65535", 65535U);
        row("-2147483648", std::numeric_limits<int>::min());
        row("uint32 4294967295", std::numeric_limits<uint>::max());
        row("int64 -9223372036854775808", std::numeric_limits<qlonglong>::min());
        row("uint64 18446744073709551615", std::numeric_limits<qulonglong>::max());
        row("1.5", 1.5);
        row("''", QString());
        row("'grün ♪'", QStringLiteral("grün ♪"));
        row("<'boxed'>", QStringLiteral("boxed"));
        row("@as []", QStringList());
        row("['a', '']", QStringList({QStringLiteral("a"), QString()}));
        row("@ay []", QByteArray());
        row("[byte 0x61, 0x00, 0xff]", QByteArray("a\0\xff", 3));
        row("@ai []", QVariantList());
        row("[1, 2]", QVariantList({1, 2}));
        row("[<1>, <'b'>]", QVariantList({1, QStringLiteral("b")}));
        row("[[1], [2, 3]]", QVariantList({QVariantList({1}), QVariantList({2, 3})}));
        row("@a{sv} {}", QVariantMap());
        row("{'a': <1>, 'b': <['c']>}",
            QVariantMap(
                {{QStringLiteral("a"), 1},
                 {QStringLiteral("b"), QStringList(QStringLiteral("c"))}}));
        row("{'a': 1}", QVariantMap({{QStringLiteral("a"), 1}}));
        row("{'a': {'b': true}}",
            QVariantMap({{QStringLiteral("a"), QVariantMap({{QStringLiteral("b"), true}})}}));
    }

    void reads()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVariant, value);
        const GVariantPointer source = parsed(text.constData());
        QVERIFY(source);

        const QVariant result = fromGVariant(source.get());

        QCOMPARE(result.userType(), value.userType());
        QCOMPARE(result, value);
    }

    void refusesToRead_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char* const text :
             {"(1, 'a')", "()", "objectpath '/a'", "signature 'as'", "handle 1", "@ms 'a'",
              "@ms nothing", "{1: 'a'}", "@a{is} {}", "[(1, 2)]", "[<(1, 2)>]", "{'a': <(1, 2)>}",
              "<objectpath '/a'>", "{objectpath '/a': 1}"}) {
            QTest::newRow(text) << QByteArray(text);
        }
    }

    void refusesToRead()
    {
        QFETCH(QByteArray, text);
        const GVariantPointer source = parsed(text.constData());
        QVERIFY(source);

        QVERIFY(!fromGVariant(source.get()).isValid());
    }

    void writes_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("text");
        const auto row = [](const char* text, const QVariant& value) {
            QTest::newRow(text) << value << QByteArray(text);
        };
        row("true", true);
        row("-5", -5);
        row("-128", QVariant::fromValue<signed char>(-128));
        row("-32768", QVariant::fromValue<short>(-32768));
        row("uint32 255", QVariant::fromValue<uchar>(255));
        row("uint32 65535", QVariant::fromValue<ushort>(65535));
        row("uint32 4294967295", std::numeric_limits<uint>::max());
        row("int64 -9223372036854775808", std::numeric_limits<qlonglong>::min());
        row("int64 -7", QVariant::fromValue<long>(-7));
        row("uint64 18446744073709551615", std::numeric_limits<qulonglong>::max());
        row("uint64 7", QVariant::fromValue<ulong>(7));
        row("1.3", 1.3);
        row("0.5", 0.5F);
        row("''", QString());
        row("'grün \"♪\"'", QStringLiteral("grün \"♪\""));
        row("@as []", QStringList());
        row("['a', '']", QStringList({QStringLiteral("a"), QString()}));
        row("@ay []", QByteArray());
        row("[byte 0x61, 0x00, 0xff]", QByteArray("a\0\xff", 3));
        row("@av []", QVariantList());
        row("[<1>, <'b'>]", QVariantList({1, QStringLiteral("b")}));
        row("@a{sv} {}", QVariantMap());
        row("{'a': <1>, 'b': <[<true>]>}",
            QVariantMap({{QStringLiteral("a"), 1}, {QStringLiteral("b"), QVariantList({true})}}));
    }

    void writes()
    {
        QFETCH(QVariant, value);
        QFETCH(QByteArray, text);

        QCOMPARE(printed(toGVariant(value)), text);
    }

    void refusesToWrite_data()
    {
        QTest::addColumn<QVariant>("value");
        const QString nul = QStringLiteral("a") + QChar::Null + QStringLiteral("b");
        QTest::newRow("invalid") << QVariant();
        QTest::newRow("URL") << QVariant(QUrl(QStringLiteral("file:///a")));
        QTest::newRow("colour") << QVariant(QColor(Qt::red));
        QTest::newRow("date and time") << QVariant(QDateTime::currentDateTime());
        QTest::newRow("character") << QVariant(QChar(u'a'));
        QTest::newRow("size") << QVariant(QSize(1, 2));
        QTest::newRow("text with NUL") << QVariant(nul);
        QTest::newRow("texts, one with NUL") << QVariant(QStringList({QString(), nul}));
        QTest::newRow("list with invalid") << QVariant(QVariantList({1, QVariant()}));
        QTest::newRow("map with URL") << QVariant(QVariantMap({{QStringLiteral("a"), QUrl()}}));
        QTest::newRow("map with NUL in key") << QVariant(QVariantMap({{nul, 1}}));
    }

    void refusesToWrite()
    {
        QFETCH(QVariant, value);

        QCOMPARE(printed(toGVariant(value)), QByteArray("none"));
    }
};

QTEST_GUILESS_MAIN(GVariantConversionTest)

#include "tst_gvariantconversion.moc"
