// SPDX-License-Identifier: BSD-3-Clause
#include "plasmaadapter.h"

#include "filecontent.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSettings>
#include <QStandardPaths>
#include <QTimer>

namespace {

const QString Image = QStringLiteral("Image");
const QString AccentColor = QStringLiteral("AccentColor");
const QString Wallpapers = QStringLiteral("wallpapers");
const QString Service = QStringLiteral("org.kde.plasmashell");

/// A script that prints the id, the kind of wallpaper and the picture of each desktop.
QString readingScript()
{
    return QStringLiteral(
        "print(JSON.stringify(desktops().map(function (d) {"
        " d.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
        " return [String(d.id), d.wallpaperPlugin, String(d.readConfig('Image'))]; })));");
}

QString writingScript(const QString& uri)
{
    return QStringLiteral("desktops().forEach(function (d) {"
                          " d.wallpaperPlugin = 'org.kde.image';"
                          " d.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
                          " d.writeConfig('Image', %1); d.writeConfig('FillMode', 2); });")
        .arg(javaScriptText(uri));
}

/// Parses the output of the script above; empty if it is something else.
QJsonArray desktopsIn(const QString& output)
{
    return QJsonDocument::fromJson(output.trimmed().toUtf8()).array();
}

/// The accent colour in the user's settings, as "r,g,b"; empty if there is none.
QString currentAccent()
{
    const QSettings settings(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
            + QStringLiteral("/kdeglobals"),
        QSettings::IniFormat);
    // QSettings uses this name for the group "General", too.
    return settings.value(AccentColor).toStringList().join(QLatin1Char(','));
}

QString settingsText(const QString& hex)
{
    const std::optional<Argb> color = Argb::fromText(hex);
    return color ? color->rgb().remove(QLatin1Char(' ')) : QString();
}

/// Whether the settings have the accent colour of the plan, if it has one.
bool hasAccent(const QJsonObject& plan)
{
    const QString accent = settingsText(plan.value(AccentColor).toString());
    return accent.isEmpty() || currentAccent() == accent;
}

/// This signal makes running programs read the colours again.
void tellPrograms()
{
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/KGlobalSettings"), QStringLiteral("org.kde.KGlobalSettings"),
        QStringLiteral("notifyChange"));
    signal << 0 << 0;
    static_cast<void>(QDBusConnection::sessionBus().send(signal)); // nobody answers a signal
}

} // namespace

QString javaScriptText(const QString& text)
{
    // JSON is JavaScript, except for two characters that end a line in older JavaScript.
    const QJsonArray array{text};
    QString literal = QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
    literal = literal.mid(1, literal.size() - 2);
    literal.replace(QChar(0x2028), QStringLiteral("\\u2028"));
    literal.replace(QChar(0x2029), QStringLiteral("\\u2029"));
    return literal;
}

PlasmaAdapter::PlasmaAdapter(const QString& pictures, QObject* parent)
    : Adapter(parent)
    , m_picturesUri(fileUri(pictures))
    , m_shell({Service})
{
}

QString PlasmaAdapter::name() const
{
    return QStringLiteral("plasma");
}

void PlasmaAdapter::detect()
{
    connect(&m_shell, &BusPresence::changed, this, [this] { setPresent(m_shell.isPresent()); });
    m_shell.follow();
}

QJsonObject PlasmaAdapter::plan(const Appearance& appearance) const
{
    QJsonObject plan;
    if (!appearance.look.wallpaper.isEmpty()) {
        plan.insert(Image, fileUri(appearance.look.wallpaper));
    }
    if (appearance.look.highlight) {
        plan.insert(AccentColor, appearance.look.highlight->hex());
    }
    return plan;
}

QString PlasmaAdapter::shortfall(const Appearance& appearance) const
{
    return appearance.look.problem;
}

void PlasmaAdapter::save(const QJsonObject& plan, const AdapterRecord& record, const SaveDone& done)
{
    Q_UNUSED(plan)
    runScript(readingScript(), [this, record, done](const QString& output, const QString& failure) {
        QJsonObject saved = record.saved;
        QJsonObject wallpapers = saved.value(Wallpapers).toObject();
        const QJsonArray desktops = desktopsIn(output);
        for (const QJsonValue& desktop : desktops) {
            const QJsonArray fields = desktop.toArray();
            if (!fields.at(2).toString().startsWith(m_picturesUri)) {
                wallpapers.insert(fields.at(0).toString(), fields);
            }
        }
        saved.insert(Wallpapers, wallpapers);
        const QString accent = currentAccent();
        const bool isOwn = accent == settingsText(record.set.value(AccentColor).toString())
            || accent == settingsText(record.earlier.value(AccentColor).toString());
        if (!saved.contains(AccentColor) || !isOwn) {
            saved.insert(AccentColor, accent);
        }
        done(saved, failure);
    });
}

void PlasmaAdapter::apply(const Appearance& appearance, const QJsonObject& plan, const Done& done)
{
    Q_UNUSED(appearance)
    const QString accent = plan.value(AccentColor).toString();
    const Done next = [this, accent, done](const QString& failure) {
        if (failure.isEmpty() && !accent.isEmpty()) {
            applyAccent(accent, done);
        } else {
            done(failure);
        }
    };
    if (plan.contains(Image)) {
        runScript(
            writingScript(plan.value(Image).toString()),
            [next](const QString& output, const QString& failure) {
                Q_UNUSED(output)
                next(failure);
            });
    } else {
        next({});
    }
}

void PlasmaAdapter::applyAccent(const QString& color, const Done& done)
{
    runTool(
        QStringLiteral("plasma-apply-colorscheme"), {QStringLiteral("--accent-color"), color},
        done);
}

void PlasmaAdapter::runTool(const QString& program, const QStringList& arguments, const Done& done)
{
    m_tool.run(
        program, {},
        [done](const QString& failure) {
            if (failure.isEmpty()) {
                tellPrograms();
            }
            done(failure);
        },
        arguments);
}

// While Plasma starts, several of its programs write these settings.
void PlasmaAdapter::verify(const QJsonObject& plan, const Done& done)
{
    if (hasAccent(plan)) {
        verifyPicture(plan, done);
        return;
    }
    constexpr int settleMs = 1000;
    QTimer::singleShot(settleMs, this, [this, plan, done] {
        if (hasAccent(plan)) {
            verifyPicture(plan, done);
        } else {
            done(QStringLiteral("The settings of Plasma do not have the accent colour."));
        }
    });
}

void PlasmaAdapter::verifyPicture(const QJsonObject& plan, const Done& done)
{
    runScript(readingScript(), [plan, done](const QString& output, const QString& failure) {
        QString difference = failure;
        const QJsonArray desktops = desktopsIn(output);
        for (const QJsonValue& desktop : desktops) {
            if (plan.contains(Image) && desktop.toArray().at(2) != plan.value(Image)) {
                difference = QStringLiteral("A desktop does not have the picture.");
            }
        }
        if (failure.isEmpty() && desktops.isEmpty()) {
            difference = QStringLiteral("The shell has no desktop.");
        }
        done(difference);
    });
}

// Restores only the desktops that still have our picture.
QString PlasmaAdapter::restoringScript(const AdapterRecord& record) const
{
    QString script;
    const QJsonObject wallpapers = record.saved.value(Wallpapers).toObject();
    for (auto wallpaper = wallpapers.begin(); wallpaper != wallpapers.end(); ++wallpaper) {
        const QJsonArray fields = wallpaper.value().toArray();
        script +=
            QStringLiteral("desktops().forEach(function (d) { if (String(d.id) != %1) return;"
                           " d.currentConfigGroup = ['Wallpaper', 'org.kde.image', 'General'];"
                           " if (String(d.readConfig('Image')).indexOf(%2) != 0) return;"
                           " d.writeConfig('Image', %3); d.wallpaperPlugin = %4; });")
                .arg(
                    javaScriptText(wallpaper.key()), javaScriptText(m_picturesUri),
                    javaScriptText(fields.at(2).toString()),
                    javaScriptText(fields.at(1).toString()));
    }
    return script;
}

void PlasmaAdapter::restore(const AdapterRecord& record, const Done& done)
{
    if (record.set.isEmpty()) {
        done({});
        return;
    }
    runScript(
        restoringScript(record),
        [this, record, done](const QString& output, const QString& failure) {
            Q_UNUSED(output)
            if (failure.isEmpty()) {
                restoreAccent(record, done);
            } else {
                done(failure);
            }
        });
}

void PlasmaAdapter::restoreAccent(const AdapterRecord& record, const Done& done)
{
    const QString accent = currentAccent();
    const QString saved = record.saved.value(AccentColor).toString();
    if (accent.isEmpty() || accent != settingsText(record.set.value(AccentColor).toString())) {
        done({});
        return;
    }
    const QStringList parts = saved.split(QLatin1Char(','));
    if (parts.size() == 3) {
        const Argb color{255, parts.at(0).toInt(), parts.at(1).toInt(), parts.at(2).toInt()};
        applyAccent(color.hex(), done);
        return;
    }
    const QString writer = QStandardPaths::findExecutable(QStringLiteral("kwriteconfig6")).isEmpty()
        ? QStringLiteral("kwriteconfig5")
        : QStringLiteral("kwriteconfig6");
    runTool(
        writer,
        {QStringLiteral("--file"), QStringLiteral("kdeglobals"), QStringLiteral("--group"),
         QStringLiteral("General"), QStringLiteral("--key"), AccentColor,
         QStringLiteral("--delete"), QString()},
        done);
}

void PlasmaAdapter::runScript(const QString& script, const ScriptDone& done)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        Service, QStringLiteral("/PlasmaShell"), QStringLiteral("org.kde.PlasmaShell"),
        QStringLiteral("evaluateScript"));
    call << script;
    call.setAutoStartService(false);
    auto* const watcher = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(call, 2 * limitMs()), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done] {
        watcher->deleteLater();
        if (watcher->isError()) {
            done({}, QStringLiteral("The shell refuses: %1").arg(watcher->error().message()));
        } else {
            done(watcher->reply().arguments().value(0).toString(), {});
        }
    });
}

void PlasmaAdapter::abandon()
{
    m_tool.end();
}
