// SPDX-License-Identifier: BSD-3-Clause
#include "stormsession.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QTest>

namespace {

int setting(const char* variable, int defaultValue)
{
    bool isSet = false;
    const int value = qEnvironmentVariableIntValue(variable, &isSet);
    return isSet ? value : defaultValue;
}

/// Prints a fault whole, which a comparison would cut off.
bool isFine(const QString& fault)
{
    if (!fault.isEmpty()) {
        qCritical().noquote() << fault;
    }
    return fault.isEmpty();
}

} // namespace

/// Everything at once. STORM_SECONDS and STORM_SEED make it last longer, and go another way.
class StormTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void daemonLivesAndAgreesWithDiskAndKeys()
    {
        const int milliseconds = 1000 * setting("STORM_SECONDS", 6);
        const auto seed = quint32(setting("STORM_SEED", 20261121));
        qInfo("%d ms of storm, seed %u", milliseconds, seed);
        StormSession session(seed);
        QVERIFY(session.start());

        QVERIFY(isFine(session.storm(milliseconds / 2)));
        QVERIFY(BusClient::isAnswered());
        QVERIFY(session.restart());
        QVERIFY(isFine(session.libraryFault()));

        QElapsedTimer time;
        time.start();
        constexpr int roundLength = 500;
        int rounds = 0;
        while (rounds == 0 || !time.hasExpired(milliseconds / 2)) {
            QVERIFY(isFine(session.stormInOrder(roundLength)));
            QVERIFY(isFine(session.libraryFault()));
            QVERIFY(isFine(session.themeFault()));
            ++rounds;
        }
        QVERIFY(isFine(session.takeUnexpectedWarnings()));
        qInfo("%d rounds, %s", rounds, qPrintable(session.summary()));
    }
};

QTEST_GUILESS_MAIN(StormTest)

#include "tst_storm.moc"
