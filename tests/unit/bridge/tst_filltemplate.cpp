// SPDX-License-Identifier: BSD-3-Clause
#include "adapters/filesadapter.h"

#include <QTest>

namespace {

Look look()
{
    Look look;
    look.highlight = Argb{255, 1, 32, 255};
    look.secondary = Argb{153, 255, 255, 255};
    look.wallpaper = QStringLiteral("/home/me/a.png");
    return look;
}

} // namespace

/// Tests how the user's templates are filled in.
class FillTemplateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsInAllForms()
    {
        QCOMPARE(
            fillTemplate(
                "{{highlight}} {{highlight.rgb}} {{secondary.argb}} {{wallpaper}}", look()),
            std::optional<QByteArray>("#0120ff 1, 32, 255 #99ffffff /home/me/a.png"));
    }

    void leavesOtherNamesAndBytesAsTheyAre()
    {
        const QByteArray text("{{other}} {highlight} \xff\x00 {{ highlight }}", 39);
        QCOMPARE(fillTemplate(text, look()), std::optional<QByteArray>(text));
    }

    void refusesToFillInWhatThereIsNot() { QVERIFY(!fillTemplate("{{primary}}", look())); }

    void refusesAPathThatNeedsQuotes()
    {
        Look odd = look();
        odd.wallpaper = QStringLiteral("/home/me/a\"; }\n.png");
        QVERIFY(!fillTemplate("{{wallpaper}}", odd));
    }
};

QTEST_GUILESS_MAIN(FillTemplateTest)

#include "tst_filltemplate.moc"
