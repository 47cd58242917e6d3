// SPDX-License-Identifier: BSD-3-Clause
#include "bridgesession.h"
#include "gnomeshell.h"
#include "playedservice.h"

#include <QDBusMessage>
#include <QFile>
#include <QJsonObject>
#include <QMutex>
#include <QMutexLocker>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString Plasma = QStringLiteral("plasma");
const QString Red = QStringLiteral("#ffe02030");

/// Plays a shell with one desktop, which understands the scripts of the bridge, and the program
/// that sets colours.
class PlayedPlasma
{
public:
    explicit PlayedPlasma(BridgeSession* session)
        : m_session(session)
        , m_shell(QDBusConnection::SessionBus, QStringLiteral("org.kde.plasmashell"))
    {
        session->folder.makeDirectory(QStringLiteral("bin"));
        session->folder.write(
            QStringLiteral("bin/plasma-apply-colorscheme"),
            "#!/usr/bin/env python3\n"
            "import os, sys\n"
            "c = sys.argv[2].lstrip('#')\n"
            "rgb = ','.join(str(int(c[i:i + 2], 16)) for i in (0, 2, 4))\n"
            "open(os.environ['XDG_CONFIG_HOME'] + '/kdeglobals', 'w').write("
            "'[General]\\nAccentColor=' + rgb + '\\n')\n");
        session->folder.setMode(QStringLiteral("bin/plasma-apply-colorscheme"), 0755);
        session->setEnvironment(
            QStringLiteral("PATH"),
            session->folder.path(QStringLiteral("bin")) + QLatin1Char(':')
                + qEnvironmentVariable("PATH"));
        m_shell.answer(QStringLiteral("evaluateScript"), [this](const QDBusMessage& call) {
            return call.createReply(evaluate(call.arguments().value(0).toString()));
        });
    }

    /// Ends the bridge first.
    ~PlayedPlasma()
    {
        m_session->kill();
        QFile::remove(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/kdeglobals"));
    }

    PlayedService& shell() { return m_shell; }

    QString image()
    {
        const QMutexLocker locker(&m_mutex);
        return m_image;
    }

    void setImage(const QString& image)
    {
        const QMutexLocker locker(&m_mutex);
        m_image = image;
    }

    /// Makes the shell report success without showing the picture, as it does for some pictures.
    void ignorePictures() { m_ignoresPictures = true; }

    static QByteArray accent()
    {
        QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/kdeglobals"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QString evaluate(const QString& script)
    {
        const QMutexLocker locker(&m_mutex);
        if (script.startsWith(QStringLiteral("print("))) {
            return QStringLiteral("[[\"1\",\"org.kde.image\",\"%1\"]]\n").arg(m_image);
        }
        const QRegularExpression writing(QStringLiteral("writeConfig\\('Image', \"([^\"]*)\"\\)"));
        const QRegularExpressionMatch match = writing.match(script);
        if (match.hasMatch() && !m_ignoresPictures) {
            m_image = match.captured(1);
        }
        return QString();
    }

    BridgeSession* const m_session;
    QMutex m_mutex;
    QString m_image = QStringLiteral("file:///mine.png");
    std::atomic<bool> m_ignoresPictures = false;
    PlayedService m_shell;
};

} // namespace

/// Tests the bridge with a played shell of Plasma.
class BridgePlasmaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setsPictureAndAccent()
    {
        BridgeSession session;
        PlayedPlasma plasma(&session);
        QVERIFY(plasma.shell().appear());
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(session.waitForFirstLook(Plasma));
        QVERIFY(plasma.image().startsWith(QStringLiteral("file:///")));
        QCOMPARE(session.values(Plasma).value(QStringLiteral("Image")).toString(), plasma.image());
        QCOMPARE(PlayedPlasma::accent(), QByteArray("[General]\nAccentColor=224,32,48\n"));
    }

    void tellsThatThePictureIsNotShown()
    {
        BridgeSession session;
        PlayedPlasma plasma(&session);
        plasma.ignorePictures();
        QVERIFY(plasma.shell().appear());
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(
            session.waitForFailure(Plasma, QStringLiteral("A desktop does not have the picture.")));
        QCOMPARE(
            session.takeWarnings(),
            QStringList(QStringLiteral("plasma: A desktop does not have the picture.")));
    }

    void restoresThePictureOfTheUser()
    {
        BridgeSession session;
        PlayedPlasma plasma(&session);
        QVERIFY(plasma.shell().appear());
        QVERIFY(session.start());
        BridgeSession::write(
            {{BridgeSession::WallpaperKey, session.picture(QStringLiteral("a.png"), Qt::red)}});
        QVERIFY(waitUntil([&] { return plasma.image() != QStringLiteral("file:///mine.png"); }));

        QVERIFY2(session.run({QStringLiteral("--restore")}) == 0, qPrintable(session.output()));

        QCOMPARE(plasma.image(), QStringLiteral("file:///mine.png"));
    }

    void doesNotKeepOtherShellsWaiting()
    {
        GnomeShell gnome;
        BridgeSession session;
        PlayedPlasma plasma(&session);
        plasma.shell().answerLater(QStringLiteral("evaluateScript"));
        QVERIFY(plasma.shell().appear());
        QVERIFY(gnome.appear());
        QVERIFY(session.start());

        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);

        QVERIFY(waitUntil([] {
            return BridgeSession::stored(BridgeSession::AccentKey) == QStringLiteral("red");
        }));
        QVERIFY(session.waitForFailure(Plasma, QStringLiteral("It did not answer within 5 s.")));
        QCOMPARE(
            session.takeWarnings(),
            QStringList(QStringLiteral("plasma: It did not answer within 5 s.")));
    }

    void copesWithAShellThatVanishesInTheMiddle()
    {
        BridgeSession session;
        PlayedPlasma plasma(&session);
        plasma.shell().answerLater(QStringLiteral("evaluateScript"));
        QVERIFY(plasma.shell().appear());
        QVERIFY(session.start());
        BridgeSession::setLook(session.picture(QStringLiteral("a.png"), Qt::red), Red);
        QVERIFY(plasma.shell().waitForCalls(1));

        plasma.shell().vanish();

        QVERIFY(session.waitForStatus(Plasma, [](const QJsonObject& status) {
            return !status.value(QStringLiteral("failure")).toString().isEmpty()
                && !status.value(QStringLiteral("present")).toBool();
        }));
        QCOMPARE(session.takeWarnings().size(), 1);
    }
};

QTEST_GUILESS_MAIN(BridgePlasmaTest)

#include "tst_bridgeplasma.moc"
