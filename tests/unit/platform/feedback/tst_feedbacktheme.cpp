// SPDX-License-Identifier: BSD-3-Clause
// Tests the theme that is installed for the feedback service.
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class FeedbackThemeTest : public QObject
{
    Q_OBJECT

private:
    QJsonObject m_theme;

    /// The feedback of the theme for attaching a cover, in one profile.
    QJsonArray feedbacks(const QString& profileName) const
    {
        QJsonArray found;
        const QJsonArray profiles = m_theme.value(QStringLiteral("profiles")).toArray();
        for (const QJsonValue& profile : profiles) {
            if (profile[QStringLiteral("name")].toString() != profileName) {
                continue;
            }
            const QJsonArray feedbacks = profile[QStringLiteral("feedbacks")].toArray();
            for (const QJsonValue& feedback : feedbacks) {
                if (feedback[QStringLiteral("event-name")] == QStringLiteral("dorsel_attach")) {
                    found.append(feedback);
                }
            }
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(QStringLiteral(FEEDBACK_DATA "/themes/default.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_theme = QJsonDocument::fromJson(file.readAll()).object();
    }

    void themeStandsOnItsOwn()
    {
        QCOMPARE(m_theme.value(QStringLiteral("name")).toString(), QStringLiteral("default"));
        QVERIFY(!m_theme.contains(QStringLiteral("parent-name")));
    }

    void attachingACoverHasASoundThatIsInstalled()
    {
        const QJsonArray found = feedbacks(QStringLiteral("full"));

        QCOMPARE(found.count(), 1);
        const QJsonObject sound = found.first().toObject();
        QCOMPARE(sound.value(QStringLiteral("type")).toString(), QStringLiteral("Sound"));
        QFile file(QStringLiteral(FEEDBACK_DATA "/%1.oga")
                       .arg(sound.value(QStringLiteral("effect")).toString()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(4), QByteArrayLiteral("OggS"));
    }

    void attachingACoverIsSilentInTheSilentProfile()
    {
        QCOMPARE(feedbacks(QStringLiteral("quiet")).count(), 1);
        QCOMPARE(feedbacks(QStringLiteral("silent")).count(), 0);
    }
};

QTEST_APPLESS_MAIN(FeedbackThemeTest)

#include "tst_feedbacktheme.moc"
