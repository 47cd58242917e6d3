// SPDX-License-Identifier: BSD-3-Clause
#include "actions.h"

#include "attributecheck.h"
#include "recordvalues.h"

#include <mgconfitem.h>

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QJSEngine>
#include <QUrl>

#include <cmath>
#include <utility>

#include <libraryreader.h>
#include <moodsetattributes.h>
#include <moodsetnames.h>
#include <queryagent.h>

namespace {

namespace Bus = MoodsetNames::Bus;

constexpr int StandardTimeoutMs = 60000;

/// How long the daemon may take to read a file after it was registered.
constexpr int ReadingTimeoutMs = 60000;

QString themeText(const QLatin1String& key)
{
    return MGConfItem(key).value().toString();
}

QString encoded(const QUrl& url)
{
    return QString::fromLatin1(url.toEncoded());
}

/// Converts a value of QML to a URL. The value is a URL, the text of a URL, or a path. For any
/// other value, the URL is empty.
QUrl urlFrom(const QJSValue& value)
{
    const QVariant given = value.toVariant();
    if (given.userType() == QMetaType::QUrl) {
        return given.toUrl();
    }
    if (given.userType() != QMetaType::QString) {
        return {};
    }
    const QString text = given.toString();
    return text.startsWith(QLatin1Char('/')) ? QUrl::fromLocalFile(text) : QUrl(text);
}

bool isNetworkUrl(const QUrl& url)
{
    return url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
}

bool isUsable(const QUrl& url)
{
    return url.isValid()
        && (isNetworkUrl(url)
            || (url.isLocalFile() && url.toLocalFile().startsWith(QLatin1Char('/'))));
}

/// Converts a number of QML to an id. 0 for any other value.
qint64 idFrom(const QJSValue& value)
{
    constexpr double largest = 9007199254740991; // above this, numbers of QML are not exact
    const double number = value.isNumber() ? value.toNumber() : 0;
    return number >= 1 && number <= largest && std::floor(number) == number ? qint64(number) : 0;
}

Content moodsetById(qint64 id)
{
    QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Moodset);
    return agent != nullptr ? agent->queryById(id) : Content();
}

Content moodsetByUrl(const QUrl& url)
{
    QueryAgent* const agent = QueryAgent::agentFor(MoodsetContent::Moodset);
    return agent != nullptr ? agent->queryByUrl(url) : Content();
}

ActionOutcome found(const Content& moodset)
{
    ActionOutcome outcome;
    if (moodset.isValid()) {
        outcome.moodset = RecordValues::row(moodset);
    }
    return outcome;
}

const MoodsetData* dataOf(const ContentRow& row)
{
    return static_cast<const MoodsetData*>(row.content.data());
}

QString pathOf(const ContentRow& row)
{
    return row.content.data()->url.toLocalFile();
}

// The keys of the map that undo() takes.
const QString MethodKey = QStringLiteral("method");
const QString UrlKey = QStringLiteral("url");
const QString IdKey = QStringLiteral("contentId");
const QString AttributesKey = QStringLiteral("attributes");

/// The value that is null in QML.
QVariant nothing()
{
    return QVariant::fromValue(nullptr);
}

std::optional<ActionOutcome> foundById(qint64 id)
{
    ActionOutcome outcome = found(moodsetById(id));
    if (!outcome.moodset.content.isValid()) {
        outcome.error = ActionOutcome::Gone;
        outcome.text = Actions::tr("there is no such moodset");
    }
    return outcome;
}

/// Makes a moodset from a file or a picture.
Action::Plan planToMake(const QUrl& source)
{
    Action::Plan plan;
    plan.method = Bus::CreateMoodset;
    plan.arguments = {encoded(source)};
    plan.prepare = [source] { return found(moodsetByUrl(source)); };
    plan.judge = [source]() -> std::optional<ActionOutcome> {
        ActionOutcome outcome = found(moodsetByUrl(source));
        return outcome.moodset.content.isValid() ? std::optional(outcome) : std::nullopt;
    };
    plan.failure = Actions::tr("the daemon has not made a moodset of it");
    return plan;
}

/// Saves checked attributes of a moodset, and checks that the moodset has them afterwards.
Action::Plan planToSave(qint64 id, const QVariantMap& values)
{
    Action::Plan plan;
    plan.method = Bus::SaveAttributes;
    plan.arguments = {int(MoodsetContent::Moodset), id, values};
    plan.prepare = [id] { return foundById(id); };
    plan.judge = [id, values]() -> std::optional<ActionOutcome> {
        std::optional<ActionOutcome> outcome = foundById(id);
        if (outcome->error != ActionOutcome::NoError) {
            return outcome;
        }
        const QStringList unchanged =
            MoodsetAttributes::differing(*dataOf(outcome->moodset), values);
        if (!unchanged.isEmpty()) {
            outcome->error = ActionOutcome::NotDone;
            outcome->text = Actions::tr("the daemon has not changed %1")
                                .arg(unchanged.join(QStringLiteral(", ")));
        }
        return outcome;
    };
    return plan;
}

} // namespace

Actions::Actions(QJSEngine* engine, QObject* parent)
    : QObject(parent)
    , m_engine(engine)
    , m_networkTimeout(StandardTimeoutMs)
{
}

Actions::~Actions() = default;

void Actions::setNetworkTimeout(int timeout)
{
    if (timeout != m_networkTimeout) {
        m_networkTimeout = timeout;
        Q_EMIT networkTimeoutChanged();
    }
}

int Actions::setMoodset(const QJSValue& url, const QJSValue& callback)
{
    return make(true, url, callback);
}

int Actions::createMoodset(const QJSValue& url, const QJSValue& callback)
{
    return make(false, url, callback);
}

int Actions::make(bool makesActive, const QJSValue& url, const QJSValue& callback)
{
    const QString method = makesActive ? Bus::SetMoodset : Bus::CreateMoodset;
    const QUrl source = urlFrom(url);
    if (!isUsable(source)) {
        return refuse(method, tr("it is neither a URL of a file nor one of the network"), callback);
    }
    struct Before
    {
        QString active;
        QString wallpaperPath;
        qint64 wallpaper = 0;
        bool wasActive = false;
        bool isLocal = false;
        bool wasKnown = false;
    };
    const auto before = std::make_shared<Before>();
    before->active = themeText(MoodsetNames::ThemeKey::ActiveMoodset);

    Action::Plan plan = planToMake(source);
    plan.method = method;
    plan.noteBefore = [before, source](const ActionOutcome& known) {
        before->wasKnown = known.moodset.content.isValid();
        // A picture from the network that the daemon knows is already on this machine.
        before->isLocal = before->wasKnown || source.isLocalFile();
        const QString file = before->wasKnown ? pathOf(known.moodset) : source.toLocalFile();
        before->wasActive = before->isLocal && before->active == file;
        before->wallpaper =
            RecordValues::stateOf(themeText(MoodsetNames::ThemeKey::ApplicationWallpaper));
    };
    if (makesActive) {
        plan.confirm = [before](const ActionOutcome& outcome) -> std::optional<ActionOutcome> {
            const bool isActive =
                themeText(MoodsetNames::ThemeKey::ActiveMoodset) == pathOf(outcome.moodset);
            // If the moodset was active before, only the time of the wallpaper shows that it was
            // applied again.
            const bool isMade = !before->wasActive
                || RecordValues::stateOf(themeText(MoodsetNames::ThemeKey::ApplicationWallpaper))
                    != before->wallpaper;
            return isActive && isMade ? std::optional(outcome) : std::nullopt;
        };
    }
    plan.waitMs = [this, before] { return before->isLocal ? 0 : m_networkTimeout; };
    if (makesActive) {
        plan.failure = tr("the daemon has not made it active");
    }
    return begin(plan, callback, [before, makesActive](const ActionOutcome& outcome) {
        if (makesActive) {
            return before->active.isEmpty() ? nothing()
                                            : QVariant(QVariantMap{
                                                {MethodKey, QString(Bus::SetMoodset)},
                                                {UrlKey, QUrl::fromLocalFile(before->active)}});
        }
        return before->wasKnown
            ? nothing()
            : QVariant(
                QVariantMap{{MethodKey, QString(Bus::Remove)}, {IdKey, outcome.moodset.id()}});
    });
}

int Actions::remove(const QJSValue& contentId, const QJSValue& callback)
{
    const qint64 id = idFrom(contentId);
    if (id == 0) {
        return refuse(Bus::Remove, tr("it is no id of a moodset"), callback);
    }
    const auto removed = std::make_shared<ContentRow>();
    Action::Plan plan;
    plan.method = Bus::Remove;
    plan.arguments = {int(MoodsetContent::Moodset), id};
    plan.prepare = [id] { return foundById(id); };
    plan.noteBefore = [removed](const ActionOutcome& before) { *removed = before.moodset; };
    plan.judge = [id]() -> std::optional<ActionOutcome> {
        return moodsetById(id).isValid() ? std::nullopt : std::optional(ActionOutcome());
    };
    plan.confirm = [removed](const ActionOutcome& outcome) -> std::optional<ActionOutcome> {
        ActionOutcome confirmed = outcome;
        confirmed.moodset = *removed;
        return confirmed;
    };
    plan.failure = tr("the daemon has not removed it");
    return begin(plan, callback, [removed](const ActionOutcome& /*outcome*/) {
        return removed->content.isValid() ? QVariant(QVariantMap{
                   {MethodKey, QString(Bus::CreateMoodset)},
                   {UrlKey, removed->content.data()->url},
                   {AttributesKey, MoodsetAttributes::whole(*dataOf(*removed))}})
                                          : nothing();
    });
}

int Actions::saveAttributes(
    const QJSValue& contentId, const QJSValue& attributes, const QJSValue& callback)
{
    const qint64 id = idFrom(contentId);
    if (id == 0) {
        return refuse(Bus::SaveAttributes, tr("it is no id of a moodset"), callback);
    }
    const CheckedAttributes checked = checkedAttributes(attributes.toVariant());
    if (!checked.error.isEmpty()) {
        return refuse(Bus::SaveAttributes, checked.error, callback);
    }
    const auto previous = std::make_shared<QVariantMap>();
    Action::Plan plan = planToSave(id, checked.values);
    plan.noteBefore = [previous, values = checked.values](const ActionOutcome& before) {
        if (before.moodset.content.isValid()) {
            *previous = MoodsetAttributes::current(*dataOf(before.moodset), values);
        }
    };
    return begin(plan, callback, [previous, id](const ActionOutcome& /*outcome*/) {
        return QVariant(QVariantMap{
            {MethodKey, QString(Bus::SaveAttributes)}, {IdKey, id}, {AttributesKey, *previous}});
    });
}

int Actions::indexFile(const QJSValue& url, const QJSValue& callback)
{
    const QUrl file = urlFrom(url);
    if (!isUsable(file) || !file.isLocalFile()) {
        return refuse(Bus::IndexFile, tr("it is no URL of a file"), callback);
    }
    Action::Plan plan;
    plan.method = Bus::IndexFile;
    plan.arguments = {encoded(file)};
    plan.judge = [path = file.toLocalFile()]() -> std::optional<ActionOutcome> {
        LibraryReader library;
        if (!library.open()) {
            return ActionOutcome{ActionOutcome::NotDone, library.error(), {}, {}};
        }
        const std::optional<LibraryFile> known = library.findFile(path);
        if (!known) {
            return ActionOutcome{
                ActionOutcome::NotDone, tr("the daemon has not taken it in"), {}, {}};
        }
        return known->current ? std::optional(ActionOutcome()) : std::nullopt;
    };
    plan.waitMs = [] { return ReadingTimeoutMs; };
    return begin(plan, callback);
}

int Actions::installPackage(const QJSValue& folder, const QJSValue& callback)
{
    const QUrl url = urlFrom(folder);
    if (!isUsable(url) || !url.isLocalFile()) {
        return refuse(Bus::InstallPackage, tr("it is no folder"), callback);
    }
    // The path must not end in a slash, because the daemon would take it for another directory.
    const QDir package(QDir::cleanPath(url.toLocalFile()));
    const QStringList names = package.entryList(
        {QStringLiteral("*.moodset"), QStringLiteral("*.index")},
        QDir::Files | QDir::CaseSensitive);
    if (names.isEmpty()) {
        return refuse(Bus::InstallPackage, tr("no file of a moodset and no index in it"), callback);
    }
    QStringList paths;
    for (const QString& name : names) {
        paths.append(package.filePath(name));
    }
    Action::Plan plan;
    plan.method = Bus::InstallPackage;
    plan.arguments = {package.path()};
    plan.judge = [paths]() -> std::optional<ActionOutcome> {
        LibraryReader library;
        if (!library.open()) {
            return ActionOutcome{ActionOutcome::NotDone, library.error(), {}, {}};
        }
        ActionOutcome outcome;
        QVariantList moodsets;
        QStringList refused;
        for (const QString& path : paths) {
            const std::optional<LibraryFile> file = library.findFile(path);
            if (file && !file->current) {
                return std::nullopt;
            }
            if (!path.endsWith(QLatin1String(".moodset")) && file) {
                continue;
            }
            const QUrl moodset = QUrl::fromLocalFile(path);
            if (file && library.moodset(moodset)) {
                moodsets.append(moodset);
            } else {
                refused.append(path);
            }
        }
        outcome.details = {
            {QStringLiteral("moodsets"), moodsets}, {QStringLiteral("refused"), refused}};
        if (!refused.isEmpty()) {
            outcome.error = ActionOutcome::NotDone;
            outcome.text = tr("the daemon has not made a moodset of %1")
                               .arg(QFileInfo(refused.constFirst()).fileName());
        }
        return outcome;
    };
    plan.waitMs = [] { return ReadingTimeoutMs; };
    return begin(plan, callback);
}

int Actions::refreshMoodsets(const QJSValue& callback)
{
    Action::Plan plan;
    plan.method = Bus::RefreshMoodsets;
    return begin(plan, callback);
}

int Actions::undo(const QJSValue& undo, const QJSValue& callback)
{
    const QVariantMap values = undo.toVariant().toMap();
    const QString method = values.value(MethodKey).toString();
    const auto value = [this, &values](const QString& key) {
        return m_engine->toScriptValue(values.value(key));
    };
    if (method == Bus::SetMoodset) {
        return setMoodset(value(UrlKey), callback);
    }
    if (method == Bus::SaveAttributes) {
        return saveAttributes(value(IdKey), value(AttributesKey), callback);
    }
    if (method == Bus::Remove) {
        return remove(value(IdKey), callback);
    }
    if (method == Bus::CreateMoodset) {
        return undoRemoval(values, callback);
    }
    return refuse(QStringLiteral("undo"), tr("there is nothing to undo"), callback);
}

/// Makes a removed moodset again, and then saves its edited attributes.
int Actions::undoRemoval(const QVariantMap& undo, const QJSValue& callback)
{
    const QUrl url = undo.value(UrlKey).toUrl();
    const CheckedAttributes checked = checkedAttributes(undo.value(AttributesKey));
    if (!isUsable(url) || !checked.error.isEmpty()) {
        return refuse(QStringLiteral("undo"), tr("there is nothing to undo"), callback);
    }
    const auto plan = planToMake(url);
    return begin(plan, callback, {}, [values = checked.values](const ActionOutcome& made) {
        return planToSave(made.moodset.id(), values);
    });
}

void Actions::cancel(int call)
{
    const auto running = m_running.constFind(call);
    if (running != m_running.constEnd() && running->action != nullptr) {
        running->action->cancel();
    }
}

int Actions::begin(
    const Action::Plan& plan, const QJSValue& callback, Undo undo,
    std::function<Action::Plan(const ActionOutcome&)> next)
{
    const int number = ++m_lastNumber;
    m_running.insert(number, {nullptr, plan.method, callback, std::move(undo), std::move(next)});
    Q_EMIT runningChanged();
    start(number, plan);
    return number;
}

void Actions::start(int number, const Action::Plan& plan)
{
    auto* const action = new Action(plan, this);
    m_running[number].action = action;
    connect(action, &Action::finished, this, [this, number](const ActionOutcome& outcome) {
        handleFinish(number, outcome);
    });
    action->start();
}

void Actions::handleFinish(int number, const ActionOutcome& outcome)
{
    const auto next = std::exchange(m_running[number].next, {});
    if (next && outcome.error == ActionOutcome::NoError) {
        start(number, next(outcome));
    } else {
        finish(number, outcome);
    }
}

int Actions::refuse(const QString& method, const QString& error, const QJSValue& callback)
{
    const int number = ++m_lastNumber;
    m_running.insert(number, {nullptr, method, callback, {}, {}});
    Q_EMIT runningChanged();
    // The caller must get the number before the outcome.
    QMetaObject::invokeMethod(
        this,
        [this, number, error] {
            finish(number, {ActionOutcome::InvalidArgument, error, {}, {}});
        },
        Qt::QueuedConnection);
    return number;
}

void Actions::finish(int number, const ActionOutcome& outcome)
{
    const Call call = m_running.take(number);
    const bool succeeded = outcome.error == ActionOutcome::NoError;
    QVariantMap values = outcome.details;
    values.insert(QStringLiteral("call"), number);
    values.insert(QStringLiteral("method"), call.method);
    values.insert(QStringLiteral("succeeded"), succeeded);
    values.insert(QStringLiteral("error"), int(outcome.error));
    values.insert(QStringLiteral("errorText"), outcome.text);
    values.insert(QStringLiteral("moodset"), RecordValues::map(outcome.moodset));
    values.insert(QStringLiteral("undo"), succeeded && call.undo ? call.undo(outcome) : nothing());
    Q_EMIT runningChanged();
    if (call.callback.isCallable()) {
        QJSValue callback = call.callback;
        const QJSValue result = callback.call({m_engine->toScriptValue(values)});
        if (result.isError()) {
            qWarning().noquote() << result.toString();
        }
    }
    Q_EMIT finished(number, values);
}
