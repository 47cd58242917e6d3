// SPDX-License-Identifier: BSD-3-Clause
#include "messagelog.h"
#include "profile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

/// A process reads the installed defaults only once, so each kind of damage has a process of its
/// own.
class DamagedProfileDefaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileThatIsNoKeyFileCostsOneWarning()
    {
        MessageLog log;
        const QDir data(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
        QVERIFY(data.mkpath(QStringLiteral("moodsetd")));
        const QString path = data.filePath(QStringLiteral("moodsetd/profile-defaults"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write("no key file\n") > 0);
        file.close();

        QVERIFY(profile_get_value("general", "ringing.alert.tone") == nullptr);
        QVERIFY(profile_get_value("general", "sms.alert.tone") == nullptr);

        const QStringList warnings = log.takeWarnings();
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(
            warnings.first().startsWith(
                QStringLiteral("Failed to read the defaults of the profiles: \"%1\" ").arg(path)),
            qPrintable(warnings.first()));
    }
};

QTEST_GUILESS_MAIN(DamagedProfileDefaultsTest)
#include "tst_damagedprofiledefaults.moc"
