// SPDX-License-Identifier: BSD-3-Clause
#include "themesession.h"
#include "toolargewarning.h"
#include "unitaddressspace.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QTest>

namespace {

const QString Package = InstalledBundles::folder() + QStringLiteral("hostile/");

/// This is a little less than the bus allows.
constexpr int HugeText = 50 * 1024 * 1024;

/// A text of this length that begins with `prefix`.
QString hugeText(const QString& prefix = QString())
{
    return prefix + QString(HugeText - prefix.size(), QLatin1Char('a'));
}

/// A file that needs nearly all of the memory that a daemon may have, except for about 100 MiB.
bool writeHugeFile(const QString& path)
{
    return InstalledBundles::write(path, "{") && QFile::resize(path, 1900LL * 1024 * 1024);
}

/// The memory that a daemon needs while it handles such a text, and some more.
constexpr qint64 EnoughForAText = 640LL * 1024 * 1024;

/// A daemon with the address space of its unit, unless another size is given.
struct HugeInputSession : ThemeSession
{
    explicit HugeInputSession(qint64 addresses = unitAddressSpace())
    {
        daemon.limitAddressSpace(addresses);
    }

    static bool writeMoodset(const QByteArray& members)
    {
        return writeBundle(
            QStringLiteral("hostile"),
            R"({"wallpaper": "w.png", "displayName": "a")" + members + '}');
    }

    /// Whether a picture is applied.
    bool setsGoodPicture()
    {
        const QString path = folders.elsewhere(QStringLiteral("good.png"));
        return writePicture(path) && set(path) && theme() == expectedTheme(path);
    }

    /// Whether the daemon starts, and also starts again when the package is in the database.
    bool startsTwice()
    {
        return startAtRest() && setsGoodPicture() && daemon.terminate() && startAtRest()
            && setsGoodPicture();
    }
};

} // namespace

/// Tests files and calls for which a daemon has not enough memory.
class HugeInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hugeFileOfAPackageIsNotRead_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("moodset file") << Package + QStringLiteral("a.moodset");
        QTest::newRow("index") << Package + QStringLiteral("a.index");
        QTest::newRow("catalogue") << QStringLiteral("/usr/share/translations/hostile-en.qm");
    }

    void hugeFileOfAPackageIsNotRead()
    {
        QFETCH(QString, path);
        HugeInputSession session;
        QVERIFY(HugeInputSession::writeMoodset(R"(, "translationCatalog": "hostile")"));
        QVERIFY(writeHugeFile(path));
        session.daemon.setEnvironment(QStringLiteral("LC_ALL"), QStringLiteral("en_US.UTF-8"));

        QVERIFY(session.startsTwice());

        QCOMPARE(session.daemon.takeWarnings(), QStringList(tooLargeWarning(path)));
    }

    void linkToADeviceIsNotRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("moodset file") << QStringLiteral("a.moodset");
        QTest::newRow("index") << QStringLiteral("a.index");
    }

    void linkToADeviceIsNotRead()
    {
        QFETCH(QString, name);
        HugeInputSession session;
        QVERIFY(QDir().mkpath(Package));
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), Package + name));

        QVERIFY(session.startsTwice());

        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void hugeFileThatAClientNamesIsNotRead()
    {
        HugeInputSession session;
        const QString path = session.folders.elsewhere(QStringLiteral("x.moodset"));
        QVERIFY(writeHugeFile(path));
        QVERIFY(session.startAtRest());

        QVERIFY(ThemeSession::set(path));

        QCOMPARE(ThemeSession::theme(), QStringList());
        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList(tooLargeWarning(path)));
    }

    void hugeTextIsNotKept_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char* method, const char* prefix, const QString& warning) {
            QTest::addRow("%s %s", method, prefix)
                << QString::fromLatin1(method) << QString::fromLatin1(prefix) << warning;
        };
        const QString invalid =
            QStringLiteral("void AlbumGallery::%1(const QString&) Invalid URL:  %2")
                .arg(QStringLiteral("%1"), QString::number(HugeText));
        for (const char* const method : {"setMoodset", "createMoodset"}) {
            for (const char* const prefix : {"", "file:///", "http://localhost/"}) {
                row(method, prefix, invalid.arg(QLatin1String(method)));
            }
        }
        row("indexFile", "file:///", QString());
        row("installPackage", "/", QString());
    }

    void hugeTextIsNotKept()
    {
        QFETCH(QString, method);
        QFETCH(QString, prefix);
        QFETCH(QString, warning);
        HugeInputSession session(EnoughForAText);
        QVERIFY(session.startAtRest());
        const QString text = hugeText(prefix);

        for (int i = 0; i < 3; ++i) {
            QCOMPARE(BusClient::call(method, {text}).type(), QDBusMessage::ReplyMessage);
        }

        QVERIFY(session.setsGoodPicture());
        QStringList warnings = session.daemon.takeWarnings();
        QCOMPARE(warnings.size(), warning.isEmpty() ? 0 : 3);
        warnings.removeAll(warning);
        QCOMPARE(warnings, QStringList());
    }

    void hugeTextsOfTheStoreAreOutlived()
    {
        HugeInputSession session;
        QVERIFY(HugeInputSession::writeMoodset({}));
        QVERIFY(session.startAtRest());
        const QString text = hugeText(QStringLiteral("/"));

        for (const QVariantList& arguments :
             {QVariantList{text, text.left(HugeText / 2)},
              QVariantList{Package.chopped(1), text}}) {
            QDBusMessage signal = QDBusMessage::createSignal(
                QStringLiteral("/StoreClient"), QStringLiteral("com.zavro.zavrostore"),
                QStringLiteral("installedMoodset"));
            signal.setArguments(arguments);
            QVERIFY(QDBusConnection::sessionBus().send(signal));
            QVERIFY(BusClient::isAnswered());
        }

        QVERIFY(session.setsGoodPicture());
        QCOMPARE(session.daemon.takeWarnings(), QStringList());
    }

    void hugeAttributesAreLeftOut()
    {
        HugeInputSession session(EnoughForAText);
        QVERIFY(HugeInputSession::writeMoodset(R"(, "version": 2)"));
        QVERIFY(session.startAtRest());
        const QString path = ThemeSession::bundleFile(QStringLiteral("hostile"));
        QVERIFY(ThemeSession::set(path));
        const QStringList theme = ThemeSession::theme();
        const QString text = hugeText();
        const QStringList keys{
            QStringLiteral("displayName"), QStringLiteral("highlightColor"),
            QStringLiteral("primaryColor"), QStringLiteral("ringerVolume")};
        QStringList warnings;

        for (const QString& key : keys) {
            QVERIFY(session.edit(path, {{key, text}}));
            warnings.append(QStringLiteral("QVariantMap plainAttributes(const QVariantMap&) "
                                           "Attribute too large \"%1\" %2")
                                .arg(key)
                                .arg(key.size() + 1 + text.size()));
        }

        QCOMPARE(ThemeSession::theme(), theme);
        QCOMPARE(
            session.library()
                .value(
                    QStringLiteral("SELECT displayName FROM file WHERE id = ?"),
                    {session.fileId(path)})
                .toString(),
            QStringLiteral("a"));
        QCOMPARE(session.daemon.takeWarnings(), warnings);
    }
};

QTEST_GUILESS_MAIN(HugeInputTest)

#include "tst_hugeinput.moc"
