// SPDX-License-Identifier: BSD-3-Clause
#include "adapters/plasmaadapter.h"

#include <QTest>

/// Tests texts in the scripts that Plasma runs.
class JavaScriptTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void quotesWhatWouldEndTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("literal");
        QTest::newRow("plain") << QStringLiteral("a b") << QStringLiteral("\"a b\"");
        QTest::newRow("quotes") << QStringLiteral("a'b\"c") << QStringLiteral("\"a'b\\\"c\"");
        QTest::newRow("backslash") << QStringLiteral("a\\") << QStringLiteral("\"a\\\\\"");
        QTest::newRow("line break") << QStringLiteral("a\nb") << QStringLiteral("\"a\\nb\"");
        QTest::newRow("line separator") << QString(QChar(0x2028)) << QStringLiteral("\"\\u2028\"");
    }

    void quotesWhatWouldEndTheText()
    {
        QFETCH(QString, text);
        QFETCH(QString, literal);
        QCOMPARE(javaScriptText(text), literal);
    }
};

QTEST_GUILESS_MAIN(JavaScriptTextTest)

#include "tst_javascripttext.moc"
