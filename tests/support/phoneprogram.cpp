// SPDX-License-Identifier: BSD-3-Clause
#include "playedphone.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace {

// This may be called from any thread, because each line is written with one call.
void say(const QString& line)
{
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

/// The services of a phone, which say what the daemon asks them to do.
class Phone
{
public:
    Phone()
    {
        m_store.answer(QStringLiteral("dorselConnected"), [](const QDBusMessage& call) {
            say(QStringLiteral("store ") + call.arguments().value(0).toString());
            return call.createReply();
        });
        m_feedback.answer(QStringLiteral("TriggerFeedback"), [](const QDBusMessage& call) {
            say(QStringLiteral("sound ") + call.arguments().value(1).toString());
            return call.createReply(1U);
        });
    }

    bool appear()
    {
        return m_cover.appear() && m_lock.appear() && m_store.appear() && m_feedback.appear();
    }

    /// Puts a cover on; an empty id takes it off.
    void wear(const QString& id)
    {
        const int ready = id.isEmpty() ? 0 : 1;
        m_cover.setProperties(id, ready);
        m_cover.announce({{QStringLiteral("DORSELID"), id}, {QStringLiteral("Ready"), ready}});
    }

    void install(const QString& package, const QString& coverId)
    {
        m_store.send(
            QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
            QStringLiteral("installedMoodset"), {package, coverId});
    }

private:
    PlayedBackCover m_cover;
    PlayedDeviceLock m_lock;
    PlayedStoreClient m_store;
    PlayedFeedback m_feedback;
};

// Returns false if there is no such command.
bool obey(Phone& phone, const QString& line)
{
    const QString command = line.section(QLatin1Char(' '), 0, 0);
    const QString rest = line.section(QLatin1Char(' '), 1);
    if (command == QLatin1String("attach")) {
        phone.wear(rest);
    } else if (command == QLatin1String("detach")) {
        phone.wear(QString());
    } else if (command == QLatin1String("install")) {
        phone.install(rest.section(QLatin1Char(' '), 0, 0), rest.section(QLatin1Char(' '), 1));
    } else {
        return false;
    }
    return true;
}

} // namespace

/// Plays the services of a phone that the daemon knows, on the buses of the environment, until the
/// standard input ends. At first, the phone is unlocked and has no back cover. It accepts lines:
///
///     attach ID             put a cover with this id on
///     detach                take the cover off
///     install PACKAGE ID    announce that the store has installed a package for a cover
///
/// and prints "ready" when all services are on the bus, "store ID" when the daemon tells the store
/// about a cover, and "sound EVENT" when it asks for a sound.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Phone phone;
    if (!phone.appear()) {
        std::fputs("played-phone: cannot take its names on the buses\n", stderr);
        return EXIT_FAILURE;
    }
    say(QStringLiteral("ready"));
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!obey(phone, QString::fromStdString(line))) {
            std::fprintf(stderr, "played-phone: no such command: %s\n", line.c_str());
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
