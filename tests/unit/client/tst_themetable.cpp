// SPDX-License-Identifier: BSD-3-Clause
#include "themetable.h"

#include <QTest>

class ThemeTableTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsKeysInTheOrderInWhichTheyAreWritten()
    {
        Theme theme;
        theme.request = QStringLiteral("/a.jpg");
        theme.homeWallpaper = QStringLiteral("/cache/1hp.jpg");
        theme.applicationWallpaper = QStringLiteral("/cache/1ap.jpg");
        theme.highlight = QColor(1, 2, 3);
        theme.secondaryHighlight = QColor(4, 5, 6);
        theme.primary = QColor(7, 8, 9);
        theme.secondary = QColor(10, 11, 12, 0xb0);
        theme.activeMoodset = QStringLiteral("/a\nb.jpg");

        QCOMPARE(
            themeTable(theme, ColorStyle::Text),
            QStringLiteral(
                "Key                                                       Value\n"
                "/desktop/tuvalo/background/portrait/picture_filename      /a.jpg\n"
                "/desktop/zavro/background/portrait/home_picture_filename  /cache/1hp.jpg\n"
                "/desktop/zavro/background/portrait/app_picture_filename   /cache/1ap.jpg\n"
                "/desktop/zavro/theme/color/highlight                      #ff010203\n"
                "/desktop/zavro/theme/color/secondaryHighlight             #ff040506\n"
                "/desktop/zavro/theme/color/primary                        #ff070809\n"
                "/desktop/zavro/theme/color/secondary                      #b00a0b0c\n"
                "/desktop/zavro/theme/active_moodset                       /a\\nb.jpg\n"));
    }

    void swatchesStandBeforeTheirText()
    {
        Theme theme;
        theme.primary = QColor(7, 8, 9);

        const QStringList lines = themeTable(theme, ColorStyle::Swatches).split(QLatin1Char('\n'));

        QVERIFY2(
            lines.at(6).endsWith(QStringLiteral("  \033[48;2;7;8;9m    \033[0m #ff070809")),
            qPrintable(lines.at(6)));
        QVERIFY2(lines.at(7).endsWith(QStringLiteral("  -")), qPrintable(lines.at(7)));
    }

    void keysThatAreNotSetHaveMinusSigns()
    {
        QStringList lines =
            themeTable(Theme(), ColorStyle::Text).trimmed().split(QLatin1Char('\n'));

        QCOMPARE(lines.takeFirst().section(QLatin1Char(' '), -1), QStringLiteral("Value"));
        QCOMPARE(lines.size(), 8);
        for (const QString& line : qAsConst(lines)) {
            QCOMPARE(line.section(QLatin1Char(' '), -1), QStringLiteral("-"));
        }
    }
};

QTEST_GUILESS_MAIN(ThemeTableTest)

#include "tst_themetable.moc"
