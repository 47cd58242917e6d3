// SPDX-License-Identifier: BSD-3-Clause
#include "content/sqlbatch.h"
#include "content/storablename.h"
#include "scratchdatabase.h"

#include <QSqlQuery>
#include <QTest>

namespace {

QString character(uint codePoint)
{
    return QString::fromUcs4(&codePoint, 1);
}

/// Each code point of the basic plane between two texts, including each half of a surrogate pair.
QStringList basicPlane(const QString& before, const QString& after)
{
    QStringList names;
    for (uint unit = 0; unit <= 0xffff; ++unit) {
        names.append(before + QChar(unit) + after);
    }
    return names;
}

/// The names for which isStorableName() and the database disagree, in UTF-16.
QStringList misjudged(const QStringList& names)
{
    ScratchDatabase scratch;
    SqlBatch rows;
    for (int i = 0; i < names.size(); ++i) {
        rows.append({i, names.at(i)});
    }
    scratch.database().transaction();
    QSqlQuery insert(scratch.database());
    insert.prepare(QStringLiteral("INSERT INTO download (fileId, source) VALUES (?, ?)"));
    if (!rows.exec(insert)) {
        return {QStringLiteral("nothing stored")};
    }
    const QVariantList stored =
        scratch.column(QStringLiteral("SELECT source FROM download ORDER BY fileId"));
    QStringList wrong;
    for (int i = 0; i < names.size(); ++i) {
        const bool isGivenBack = stored.at(i).toString() == names.at(i);
        if (isGivenBack != isStorableName(names.at(i))) {
            QStringList units;
            for (const QChar unit : names.at(i)) {
                units.append(QString::number(unit.unicode(), 16));
            }
            wrong.append(units.join(QLatin1Char(' ')));
        }
    }
    return wrong;
}

} // namespace

/// Compares isStorableName() with what the database returns.
class StorableNameTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void codePointsOfTheBasicPlane_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        const QString text = QStringLiteral("a");
        QTest::newRow("alone") << QString() << QString();
        QTest::newRow("at the start") << QString() << text;
        QTest::newRow("inside") << text << text;
        QTest::newRow("at the end") << text << QString();
        QTest::newRow("before a high surrogate") << text << character(0x1f600);
        QTest::newRow("before a low surrogate") << text << QString(QChar(0xde00));
        QTest::newRow("after a high surrogate") << QString(QChar(0xd83d)) << text;
    }

    void codePointsOfTheBasicPlane()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);

        QCOMPARE(misjudged(basicPlane(before, after)), QStringList());
    }

    void codePointsBeyondTheBasicPlane()
    {
        QStringList names;
        for (uint codePoint = 0x10000; codePoint <= 0x10ffff; codePoint += 0x7f) {
            names.append(character(codePoint) + QStringLiteral(".jpg"));
        }
        for (uint plane = 1; plane <= 16; ++plane) {
            names.append(character(plane * 0x10000 + 0xfffe));
            names.append(character(plane * 0x10000 + 0xffff));
        }

        QCOMPARE(misjudged(names), QStringList());
    }

    void usualNamesAreStorable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("ASCII") << QStringLiteral("IMG_0001.jpg");
        QTest::newRow("accent") << QStringLiteral("caf\u00e9.jpg");
        QTest::newRow("emoji") << QStringLiteral("\U0001f600.jpg");
        QTest::newRow("replacement character") << QStringLiteral("\ufffd.jpg");
        QTest::newRow("byte order mark inside") << QStringLiteral("a\ufeff.jpg");
        QTest::newRow("empty") << QStringLiteral("");
    }

    void usualNamesAreStorable()
    {
        QFETCH(QString, name);

        QVERIFY(isStorableName(name));
    }
};

QTEST_GUILESS_MAIN(StorableNameTest)

#include "tst_storablename.moc"
