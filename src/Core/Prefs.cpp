#include "Core/Prefs.h"

#include "Platform/Clock.h"
#include "Platform/Defaults.h"
#include "Platform/Places.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <array>
#include <filesystem>
#include <initializer_list>
#include <optional>
#include <type_traits>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using Module = Prefs::Module;
using Mode = Prefs::Mode;

struct ModuleFacts {
    QLatin1StringView raw;
    const char *label;
    const char *detail;
};

// In the order of Prefs::Module, in which the user sees them too.
constexpr std::array<ModuleFacts, 10> kModules{{
    {"agents"_L1, QT_TRANSLATE_NOOP("Prefs", "AI agents"),
     QT_TRANSLATE_NOOP("Prefs", "Claude Code sessions, plus a scan for Codex, Cursor, Ollama and other AI tools.")},
    {"todos"_L1, QT_TRANSLATE_NOOP("Prefs", "Todos"),
     QT_TRANSLATE_NOOP("Prefs", "Your own todo list, kept in Velto on this Mac.")},
    {"calendar"_L1, QT_TRANSLATE_NOOP("Prefs", "Meetings"),
     QT_TRANSLATE_NOOP("Prefs", "A meeting you add yourself, with an optional join link. No Mac Calendar access.")},
    {"prs"_L1, QT_TRANSLATE_NOOP("Prefs", "GitHub reviews"),
     QT_TRANSLATE_NOOP("Prefs", "Pull requests waiting for your review, through the GitHub CLI.")},
    {"work"_L1, QT_TRANSLATE_NOOP("Prefs", "Work and outreach"),
     QT_TRANSLATE_NOOP("Prefs",
                       "Sales follow-ups, assigned issues and Slack mentions. CRM connections are explicit and email drafts "
                       "always require approval.")},
    {"media"_L1, QT_TRANSLATE_NOOP("Prefs", "Now playing"),
     QT_TRANSLATE_NOOP("Prefs", "What Music or Spotify is playing, with play/pause.")},
    {"focus"_L1, QT_TRANSLATE_NOOP("Prefs", "Focus timer"), QT_TRANSLATE_NOOP("Prefs", "A timer that counts down in the velto.")},
    {"usage"_L1, QT_TRANSLATE_NOOP("Prefs", "Claude usage today"),
     QT_TRANSLATE_NOOP("Prefs", "Tokens Claude Code used today, read from its local logs.")},
    {"mcp"_L1, QT_TRANSLATE_NOOP("Prefs", "MCP server health"),
     QT_TRANSLATE_NOOP("Prefs", "Which MCP servers Claude Code can't reach.")},
    {"repos"_L1, QT_TRANSLATE_NOOP("Prefs", "Git repos with unsaved work"),
     QT_TRANSLATE_NOOP("Prefs", "Repos with uncommitted or unpushed changes in the folders you choose.")},
}};

struct ModeFacts {
    QLatin1StringView raw;
    const char *title;
};

constexpr std::array<ModeFacts, 5> kModes{{
    {"engineer"_L1, QT_TRANSLATE_NOOP("Prefs", "Engineer")},
    {"ai"_L1, QT_TRANSLATE_NOOP("Prefs", "AI")},
    {"sales"_L1, QT_TRANSLATE_NOOP("Prefs", "Sales")},
    {"all"_L1, QT_TRANSLATE_NOOP("Prefs", "All")},
    {"custom"_L1, QT_TRANSLATE_NOOP("Prefs", "Custom")},
}};

constexpr std::array kOpenModes{"hover"_L1, "click"_L1};
constexpr std::array kCalendarSources{"manual"_L1, "google"_L1};

std::initializer_list<Module> modulesOf(Mode mode)
{
    static constexpr std::initializer_list<Module> kEngineer{Module::Agents, Module::Todos, Module::Calendar, Module::Prs,
                                                             Module::Focus,  Module::Usage, Module::Mcp,      Module::Repos};
    static constexpr std::initializer_list<Module> kAi{Module::Agents, Module::Todos, Module::Calendar,
                                                       Module::Focus,  Module::Usage, Module::Mcp};
    static constexpr std::initializer_list<Module> kSales{Module::Todos, Module::Calendar, Module::Work, Module::Focus,
                                                          Module::Mcp};
    static constexpr std::initializer_list<Module> kAll{Module::Agents, Module::Todos, Module::Calendar, Module::Prs,
                                                        Module::Work,   Module::Media, Module::Focus,    Module::Usage,
                                                        Module::Mcp,    Module::Repos};
    switch (mode) {
    case Mode::Engineer:
        return kEngineer;
    case Mode::Ai:
        return kAi;
    case Mode::Sales:
        return kSales;
    case Mode::All:
        return kAll;
    case Mode::Custom:
        break;
    }
    return {};
}

// The stored value, if it has exactly this type.
template <typename T> std::optional<T> stored(const Defaults &defaults, QLatin1StringView key)
{
    const QVariant value = defaults.value(key);
    if (value.metaType() == QMetaType::fromType<T>())
        return value.value<T>();
    return std::nullopt;
}

// The case whose raw value is stored, or `fallback` for a missing or unknown one.
template <typename Enum, typename Table, typename Raw>
Enum choice(const Defaults &defaults, QLatin1StringView key, const Table &table, Raw raw, Enum fallback)
{
    const QString value = stored<QString>(defaults, key).value_or(QString());
    const auto found = std::ranges::find_if(table, [&](const auto &entry) { return value == raw(entry); });
    return found == table.end() ? fallback : Enum(found - table.begin());
}

constexpr auto kItself = [](QLatin1StringView raw) { return raw; };
constexpr auto kRawOfMode = [](const ModeFacts &facts) { return facts.raw; };

} // namespace

template <typename T> Prefs::Setting<T> Prefs::read(QLatin1StringView key, const T &fallback) const
{
    if constexpr (std::is_same_v<T, OpenMode>) {
        return {key, choice(m_defaults, key, kOpenModes, kItself, fallback)};
    } else if constexpr (std::is_same_v<T, Mode>) {
        return {key, choice(m_defaults, key, kModes, kRawOfMode, fallback)};
    } else if constexpr (std::is_same_v<T, CalendarSource>) {
        return {key, choice(m_defaults, key, kCalendarSources, kItself, fallback)};
    } else if constexpr (std::is_same_v<T, QSet<QString>>) {
        const auto list = stored<QStringList>(m_defaults, key);
        return {key, list ? QSet<QString>(list->cbegin(), list->cend()) : fallback};
    } else {
        return {key, stored<T>(m_defaults, key).value_or(fallback)};
    }
}

QVariant Prefs::rawOf(const QSet<QString> &values)
{
    QStringList list(values.cbegin(), values.cend());
    list.sort();
    return list;
}

QVariant Prefs::rawOf(OpenMode value)
{
    return QString(kOpenModes[std::size_t(value)]);
}

QVariant Prefs::rawOf(Mode value)
{
    return QString(kModes[std::size_t(value)].raw);
}

QVariant Prefs::rawOf(CalendarSource value)
{
    return QString(kCalendarSources[std::size_t(value)]);
}

Prefs::Prefs(Defaults &defaults, const Places &places, const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_openMode(read("openMode"_L1, OpenMode::Hover))
    , m_mode(read("mode"_L1, Mode::Custom))
    , m_off(read("modulesOff"_L1, QSet{rawValue(Module::Calendar)}))
    , m_repoRoots(read("repoRoots"_L1, defaultRepoRoots(places.home)))
    , m_repoRootsChosen(stored<QStringList>(defaults, "repoRoots"_L1).has_value())
    , m_quillboxURL(read<QString>("quillboxURL"_L1))
    , m_jiraSite(read<QString>("jiraSite"_L1))
    , m_jiraEmail(read<QString>("jiraEmail"_L1))
    , m_dailyBudget(read<qint64>("dailyBudget"_L1))
    , m_quietWhileRecording(read("quietWhileRecording"_L1, true))
    , m_peekOnFinish(read("peekOnFinish"_L1, true))
    , m_onboarded(read<bool>("onboarded"_L1))
    , m_meetingTitle(read<QString>("meetingTitle"_L1))
    , m_meetingURL(read<QString>("meetingURL"_L1))
    , m_meetingStart(read("meetingStart"_L1, clock.wallTime().addSecs(3600)))
    , m_calendarSource(read("calendarSource"_L1, CalendarSource::Manual))
    , m_googleCalendarIDs(read<QStringList>("googleCalendarIDs"_L1))
    , m_dailyPriority(read<QString>("dailyPriority"_L1))
    , m_dismissedAgentIDs(read<QSet<QString>>("dismissedAgentIDs"_L1))
    , m_glanceGuideDismissed(read<bool>("glanceGuideDismissed"_L1))
{
}

bool Prefs::isOn(Module module) const
{
    return !m_off.value.contains(rawValue(module));
}

bool Prefs::anyOn() const
{
    return std::ranges::any_of(kModules, [this](const ModuleFacts &facts) { return !m_off.value.contains(facts.raw); });
}

void Prefs::set(Module module, bool on)
{
    if (on)
        m_off.value.remove(rawValue(module));
    else
        m_off.value.insert(rawValue(module));
    m_mode.value = Mode::Custom;
    store(m_off);
    store(m_mode);
    Q_EMIT changed();
}

void Prefs::selectMode(Mode mode, const QList<Module> &without)
{
    m_mode.value = mode;
    store(m_mode);
    if (mode != Mode::Custom) {
        m_off.value.clear();
        for (const ModuleFacts &facts : kModules)
            m_off.value.insert(facts.raw);
        for (const Module on : modulesOf(mode))
            m_off.value.remove(rawValue(on));
        for (const Module off : without)
            m_off.value.insert(rawValue(off));
        store(m_off);
    }
    Q_EMIT changed();
}

void Prefs::store(QLatin1StringView key, const QVariant &value)
{
    m_defaults.set(key, value);
}

void Prefs::setRepoRoots(const QStringList &value)
{
    m_repoRootsChosen = true;
    change(m_repoRoots, value);
}

QStringList Prefs::defaultRepoRoots(const QString &home)
{
    // Judged by the names in the home folder: looking into one may block for ever if it is on another machine.
    QStringList present;
    std::error_code error;
    for (std::filesystem::directory_iterator at(QFile::encodeName(home).toStdString(), error), end; !error && at != end;
         at.increment(error))
        present.append(QFile::decodeName(at->path().filename().c_str()));
    QStringList roots;
    for (const auto name : {"src"_L1, "code"_L1, "Code"_L1, "Developer"_L1, "Projects"_L1, "dev"_L1, "repos"_L1, "GitHub"_L1}) {
        if (present.contains(name))
            roots.append(home + '/'_L1 + name);
    }
    return roots;
}

QString Prefs::rawValue(Module module)
{
    return kModules[std::size_t(module)].raw;
}

QString Prefs::label(Module module)
{
    return QCoreApplication::translate("Prefs", kModules[std::size_t(module)].label);
}

QString Prefs::detail(Module module)
{
    return QCoreApplication::translate("Prefs", kModules[std::size_t(module)].detail);
}

QString Prefs::title(Mode mode)
{
    return QCoreApplication::translate("Prefs", kModes[std::size_t(mode)].title);
}

} // namespace velto
