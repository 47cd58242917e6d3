// SPDX-License-Identifier: BSD-3-Clause
#include "content/moodsetdata.h"
#include "content/moodsetnames.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

/// Compares the public names with what describes them in other places.
class MoodsetNamesTest : public QObject
{
    Q_OBJECT

private:
    static QStringList namesIn(const QString& path, const QString& pattern)
    {
        QFile file(path);
        QStringList names;
        if (file.open(QIODevice::ReadOnly)) {
            const QString text = QString::fromUtf8(file.readAll());
            auto matches = QRegularExpression(pattern).globalMatch(text);
            while (matches.hasNext()) {
                names.append(matches.next().captured(1));
            }
        }
        return names;
    }

private Q_SLOTS:
    void methodsAndSignalsAreThoseOfTheInterface()
    {
        using namespace MoodsetNames;
        QStringList methods{Bus::IndexFile,      Bus::CreateMoodset,  Bus::SetMoodset,
                            Bus::Remove,         Bus::InstallPackage, Bus::SaveAttributes,
                            Bus::RefreshMoodsets};
        QStringList described =
            namesIn(QStringLiteral(BUS_INTERFACE), QStringLiteral("<method name=\"(\\w+)\""));
        methods.sort();
        described.sort();

        QCOMPARE(methods, described);
        QCOMPARE(
            namesIn(QStringLiteral(BUS_INTERFACE), QStringLiteral("<signal name=\"(\\w+)\"")),
            QStringList(Bus::ContentChanged));
        QCOMPARE(
            namesIn(QStringLiteral(BUS_INTERFACE), QStringLiteral("<interface name=\"([\\w.]+)\"")),
            QStringList(Bus::Interface));
    }

    void attributesAreRolesOfMoodsets()
    {
        using namespace MoodsetNames;
        const QList<QByteArray> roles = MoodsetData::roleNames().values();
        for (const QLatin1String& name :
             {Attribute::DisplayName, Attribute::Favorite, Attribute::RingerVolume,
              Attribute::HighlightColor, Attribute::SecondaryHighlightColor,
              Attribute::PrimaryColor, Attribute::SecondaryColor, Attribute::Resources}) {
            QVERIFY2(roles.contains(name.data()), name.data());
        }
        const QHash<int, QByteArray> names = MoodsetData::roleNames();
        for (std::size_t bit = 0; bit < Tones.size(); ++bit) {
            const Tone& tone = Tones.at(bit);
            QCOMPARE(
                names.value(MoodsetData::RingerToneEnabledRole + int(bit)),
                QByteArray(tone.enabled.data()));
            QCOMPARE(QString(tone.enabled), tone.name + QStringLiteral("Enabled"));
            QCOMPARE(QString(tone.file), tone.name + QStringLiteral("File"));
        }
    }

    void themeKeysAreThoseOfTheDocument()
    {
        using namespace MoodsetNames;
        const QStringList keys = namesIn(
            QStringLiteral(THEME_DOCUMENT),
            QStringLiteral("\\n\\| `(/desktop/[\\w/]+)` \\| (?:the path|`#aarrggbb`)"));
        QCOMPARE(
            keys,
            QStringList(
                {ThemeKey::Request, ThemeKey::HomeWallpaper, ThemeKey::ApplicationWallpaper,
                 ThemeKey::Highlight, ThemeKey::SecondaryHighlight, ThemeKey::Primary,
                 ThemeKey::Secondary, ThemeKey::ActiveMoodset}));
    }
};

QTEST_GUILESS_MAIN(MoodsetNamesTest)

#include "tst_moodsetnames.moc"
