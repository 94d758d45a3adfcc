#include "Core/Prefs.h"

#include "Platform/Clock.h"
#include "Platform/Defaults.h"
#include "Platform/Places.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
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

// By the order of Prefs::Module, which is also the order in which the user sees them.
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

// The stored value, if it has just this type.
template <typename T> std::optional<T> stored(const Defaults &defaults, QLatin1StringView key)
{
    const QVariant value = defaults.value(key);
    if (value.metaType() == QMetaType::fromType<T>())
        return value.value<T>();
    return std::nullopt;
}

QString text(const Defaults &defaults, QLatin1StringView key)
{
    return stored<QString>(defaults, key).value_or(QString());
}

QSet<QString> set(const QStringList &list)
{
    return {list.cbegin(), list.cend()};
}

QStringList sorted(const QSet<QString> &values)
{
    QStringList list(values.cbegin(), values.cend());
    list.sort();
    return list;
}

// The case whose raw value is stored, or `fallback` for a missing or unknown one.
template <typename Enum, typename Table, typename Raw>
Enum choice(const Defaults &defaults, QLatin1StringView key, const Table &table, Raw raw, Enum fallback)
{
    const QString value = text(defaults, key);
    const auto found = std::ranges::find_if(table, [&](const auto &entry) { return value == raw(entry); });
    return found == table.end() ? fallback : Enum(found - table.begin());
}

constexpr auto kItself = [](QLatin1StringView raw) { return raw; };
constexpr auto kRawOfMode = [](const ModeFacts &facts) { return facts.raw; };

} // namespace

Prefs::Prefs(Defaults &defaults, const Places &places, const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_openMode(choice(defaults, "openMode"_L1, kOpenModes, kItself, OpenMode::Hover))
    , m_mode(choice(defaults, "mode"_L1, kModes, kRawOfMode, Mode::Custom))
    , m_hoverDelay(stored<double>(defaults, "hoverDelay"_L1).value_or(0.3))
    , m_off(velto::set(stored<QStringList>(defaults, "modulesOff"_L1).value_or(QStringList{rawValue(Module::Calendar)})))
    , m_repoRoots(stored<QStringList>(defaults, "repoRoots"_L1).value_or(defaultRepoRoots(places.home)))
    , m_repoRootsChosen(stored<QStringList>(defaults, "repoRoots"_L1).has_value())
    , m_quillboxURL(text(defaults, "quillboxURL"_L1))
    , m_jiraSite(text(defaults, "jiraSite"_L1))
    , m_jiraEmail(text(defaults, "jiraEmail"_L1))
    , m_dailyBudget(stored<qlonglong>(defaults, "dailyBudget"_L1).value_or(0))
    , m_quietWhileRecording(stored<bool>(defaults, "quietWhileRecording"_L1).value_or(true))
    , m_peekOnFinish(stored<bool>(defaults, "peekOnFinish"_L1).value_or(true))
    , m_onboarded(stored<bool>(defaults, "onboarded"_L1).value_or(false))
    , m_calendarIDs(stored<QStringList>(defaults, "calendarIDs"_L1).value_or(QStringList()))
    , m_meetingTitle(text(defaults, "meetingTitle"_L1))
    , m_meetingURL(text(defaults, "meetingURL"_L1))
    , m_meetingStart(stored<QDateTime>(defaults, "meetingStart"_L1).value_or(clock.wallTime().addSecs(3600)))
    , m_calendarSource(choice(defaults, "calendarSource"_L1, kCalendarSources, kItself, CalendarSource::Manual))
    , m_googleCalendarIDs(stored<QStringList>(defaults, "googleCalendarIDs"_L1).value_or(QStringList()))
    , m_dailyPriority(text(defaults, "dailyPriority"_L1))
    , m_dismissedAgentIDs(velto::set(stored<QStringList>(defaults, "dismissedAgentIDs"_L1).value_or(QStringList())))
    , m_glanceGuideDismissed(stored<bool>(defaults, "glanceGuideDismissed"_L1).value_or(false))
{
}

bool Prefs::isOn(Module module) const
{
    return !m_off.contains(rawValue(module));
}

bool Prefs::anyOn() const
{
    return std::ranges::any_of(kModules, [this](const ModuleFacts &facts) { return !m_off.contains(facts.raw); });
}

void Prefs::set(Module module, bool on)
{
    if (on)
        m_off.remove(rawValue(module));
    else
        m_off.insert(rawValue(module));
    m_mode = Mode::Custom;
    store("modulesOff"_L1, sorted(m_off));
    store("mode"_L1, QString(kModes[std::size_t(m_mode)].raw));
    Q_EMIT changed();
}

void Prefs::selectMode(Mode mode, const QList<Module> &without)
{
    m_mode = mode;
    store("mode"_L1, QString(kModes[std::size_t(mode)].raw));
    if (mode != Mode::Custom) {
        m_off.clear();
        for (const ModuleFacts &facts : kModules)
            m_off.insert(facts.raw);
        for (const Module on : modulesOf(mode))
            m_off.remove(rawValue(on));
        for (const Module off : without)
            m_off.insert(rawValue(off));
        store("modulesOff"_L1, sorted(m_off));
    }
    Q_EMIT changed();
}

void Prefs::store(QLatin1StringView key, const QVariant &value)
{
    m_defaults.set(key, value);
}

template <typename T> void Prefs::write(QLatin1StringView key, T &field, const T &value, const QVariant &raw)
{
    field = value;
    store(key, raw);
    Q_EMIT changed();
}

void Prefs::setOpenMode(OpenMode value)
{
    write("openMode"_L1, m_openMode, value, QString(kOpenModes[std::size_t(value)]));
}

void Prefs::setRepoRoots(const QStringList &value)
{
    m_repoRootsChosen = true;
    write("repoRoots"_L1, m_repoRoots, value, value);
}

void Prefs::setQuillboxURL(const QString &value)
{
    write("quillboxURL"_L1, m_quillboxURL, value, value);
}

void Prefs::setJiraSite(const QString &value)
{
    write("jiraSite"_L1, m_jiraSite, value, value);
}

void Prefs::setJiraEmail(const QString &value)
{
    write("jiraEmail"_L1, m_jiraEmail, value, value);
}

void Prefs::setDailyBudget(qint64 value)
{
    write("dailyBudget"_L1, m_dailyBudget, value, qlonglong(value));
}

void Prefs::setQuietWhileRecording(bool value)
{
    write("quietWhileRecording"_L1, m_quietWhileRecording, value, value);
}

void Prefs::setPeekOnFinish(bool value)
{
    write("peekOnFinish"_L1, m_peekOnFinish, value, value);
}

void Prefs::setOnboarded(bool value)
{
    write("onboarded"_L1, m_onboarded, value, value);
}

void Prefs::setMeetingTitle(const QString &value)
{
    write("meetingTitle"_L1, m_meetingTitle, value, value);
}

void Prefs::setMeetingURL(const QString &value)
{
    write("meetingURL"_L1, m_meetingURL, value, value);
}

void Prefs::setMeetingStart(const QDateTime &value)
{
    write("meetingStart"_L1, m_meetingStart, value, value);
}

void Prefs::setCalendarSource(CalendarSource value)
{
    write("calendarSource"_L1, m_calendarSource, value, QString(kCalendarSources[std::size_t(value)]));
}

void Prefs::setGoogleCalendarIDs(const QStringList &value)
{
    write("googleCalendarIDs"_L1, m_googleCalendarIDs, value, value);
}

void Prefs::setDailyPriority(const QString &value)
{
    write("dailyPriority"_L1, m_dailyPriority, value, value);
}

void Prefs::setDismissedAgentIDs(const QSet<QString> &value)
{
    write("dismissedAgentIDs"_L1, m_dismissedAgentIDs, value, sorted(value));
}

void Prefs::setGlanceGuideDismissed(bool value)
{
    write("glanceGuideDismissed"_L1, m_glanceGuideDismissed, value, value);
}

QStringList Prefs::defaultRepoRoots(const QString &home)
{
    QStringList roots;
    for (const auto name : {"src"_L1, "code"_L1, "Code"_L1, "Developer"_L1, "Projects"_L1, "dev"_L1, "repos"_L1, "GitHub"_L1}) {
        const QString path = home + '/'_L1 + name;
        if (QFileInfo::exists(path))
            roots.append(path);
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
