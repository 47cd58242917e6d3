// SPDX-License-Identifier: BSD-3-Clause
// Lists moodsets and pictures, and lists them again whenever the daemon announces that there is
// something new to read.
#include <moodset-content/photodata.h>
#include <moodset-content/queryagent.h>

#include <QCoreApplication>
#include <QDBusConnection>
#include <QTimer>

#include <cstdio>

class Printer final : public QueryAgent::Recipient
{
public:
    void receive(const QVector<Content>& batch) override
    {
        for (const Content& content : batch) {
            const QVariant name = content.data()->data(FileData::FileNameRole);
            if (const ContentSpecialization<PhotoData> photo{content}) {
                std::printf(
                    "photo %s, %d x %d\n", qPrintable(name.toString()), photo->width,
                    photo->height);
            } else {
                std::printf("moodset %s\n", qPrintable(name.toString()));
            }
        }
        count += batch.size();
    }

    int count = 0;
};

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QTimer timer; // Many signals in a short time cause only one listing.
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [] {
        Printer printer;
        for (const auto type : {MoodsetContent::Moodset, MoodsetContent::Image}) {
            // Null until the daemon has made the database; its first signal comes after that.
            if (QueryAgent* const agent = QueryAgent::agentFor(type)) {
                agent->query(&printer, {});
            }
        }
        std::printf("%d in all\n", printer.count);
        std::fflush(stdout);
    });
    QDBusConnection::sessionBus().connect(
        QStringLiteral("com.zavro.moodsetd"), QStringLiteral("/com/zavro/moodsetd"),
        QStringLiteral("com.zavro.moodsetd"), QStringLiteral("contentChanged"), &timer,
        SLOT(start()));
    timer.start();
    return QCoreApplication::exec();
}
