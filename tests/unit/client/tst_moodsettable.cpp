// SPDX-License-Identifier: BSD-3-Clause
#include "moodsettable.h"

#include <QFileInfo>
#include <QTest>

class MoodsetTableTest : public QObject
{
    Q_OBJECT

private:
    static ListedMoodset moodset(qint64 id, const char* name, const char* file)
    {
        ListedMoodset moodset;
        moodset.id = id;
        moodset.displayName = QString::fromUtf8(name);
        moodset.path = QString::fromLatin1(file);
        return moodset;
    }

private Q_SLOTS:
    void showsWhatAMoodsetIs()
    {
        ListedMoodset coast = moodset(8, "K\u00fcste", "/share/coast.moodset");
        coast.favorite = true;
        coast.primaryColor = QStringLiteral("#ffffffff");
        coast.secondaryColor = QStringLiteral("#b0ffffff");
        coast.highlightColor = QStringLiteral("#ff6fc3f7");
        const ListedMoodset plain = moodset(12, "Line\nbreak", "/a.jpg");

        const QString table =
            moodsetTable({coast, plain}, QStringLiteral("/a.jpg"), ColorStyle::Text);

        QCOMPARE(
            table,
            QString::fromUtf8("Id  Name         Favourite  Active  File                  Colours\n"
                              "8   K\u00fcste        yes        -       /share/coast.moodset  "
                              "#ffffffff #b0ffffff #ff6fc3f7 -\n"
                              "12  Line\\nbreak  -          yes     /a.jpg                - - - -\n"
                              "2 moodsets\n"));
    }

    void swatchesAreColouredFields()
    {
        ListedMoodset coast = moodset(1, "Coast", "/a");
        coast.primaryColor = QStringLiteral("#b0010203");

        const QString table = moodsetTable({coast}, QString(), ColorStyle::Swatches);

        QVERIFY2(
            table.contains(QStringLiteral("  \033[48;2;1;2;3m    \033[0m - - -\n1 moodset\n")),
            qPrintable(table));
    }

    void aMoodsetWithoutANameIsCalledAsItsFile()
    {
        for (const char* const path :
             {"/a/b.jpg", "/a/b.c.jpg", "/a.d/b", "/a.d/b.", "/a/.b", "/a/", "/a/b c", "b.jpg", "b",
              "/"}) {
            QCOMPARE(
                calledName(moodset(1, "", path)),
                QFileInfo(QString::fromLatin1(path)).completeBaseName());
        }
        QCOMPARE(calledName(moodset(1, "Coast", "/a/b.jpg")), QStringLiteral("Coast"));
    }

    void noMoodsetsMakeNoTable()
    {
        QCOMPARE(moodsetTable({}, QString(), ColorStyle::Swatches), QStringLiteral("0 moodsets\n"));
    }
};

QTEST_GUILESS_MAIN(MoodsetTableTest)

#include "tst_moodsettable.moc"
