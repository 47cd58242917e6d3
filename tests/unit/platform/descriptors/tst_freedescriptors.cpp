// SPDX-License-Identifier: BSD-3-Clause
#include "freedescriptors.h"

#include <QTest>

#include <vector>

#include <sys/resource.h>
#include <unistd.h>

namespace {

/// Opens all descriptors that this process may have, except for this many.
class DescriptorHog
{
public:
    explicit DescriptorHog(int left)
    {
        rlimit limit{};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = 256;
        setrlimit(RLIMIT_NOFILE, &limit);
        for (int taken = dup(STDOUT_FILENO); taken >= 0; taken = dup(STDOUT_FILENO)) {
            m_taken.push_back(taken);
        }
        for (int i = 0; i < left && !m_taken.empty(); ++i) {
            close(m_taken.back());
            m_taken.pop_back();
        }
    }

    ~DescriptorHog()
    {
        for (const int taken : m_taken) {
            close(taken);
        }
    }

    Q_DISABLE_COPY_MOVE(DescriptorHog)

private:
    std::vector<int> m_taken;
};

} // namespace

class FreeDescriptorsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noMoreAreFreeThanAreLeft()
    {
        const DescriptorHog hog(5);

        QVERIFY(!areDescriptorsFree(6));
        QVERIFY(areDescriptorsFree(5));
    }

    void checkKeepsNone()
    {
        const DescriptorHog hog(5);

        for (int i = 0; i < 3; ++i) {
            QVERIFY(areDescriptorsFree(5));
            QVERIFY(!areDescriptorsFree(6));
        }
    }
};

QTEST_GUILESS_MAIN(FreeDescriptorsTest)

#include "tst_freedescriptors.moc"
