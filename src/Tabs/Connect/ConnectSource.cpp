#include "Tabs/Connect/ConnectSource.h"

#include "Core/Texts.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Feeds/Repositories/WatchFolders.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Platform/Clipboard.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

using Module = Prefs::Module;

constexpr std::array kModes{Prefs::Mode::Engineer, Prefs::Mode::Ai, Prefs::Mode::Sales, Prefs::Mode::All, Prefs::Mode::Custom};
constexpr std::array kWork{Module::Agents, Module::Prs, Module::Work, Module::Mcp};
constexpr std::array kContext{Module::Todos, Module::Calendar, Module::Repos};
constexpr std::array kUtilities{Module::Media, Module::Focus, Module::Usage};

struct SalesConnector {
    const char *name;
    const char *symbol;
    const char *mcp; ///< the service's short name
};
constexpr std::array<SalesConnector, 3> kSales{
    {{"Salesforce", "cloud", "salesforce"},
     {"Gong", "waveform", "gong"},
     {QT_TRANSLATE_NOOP("velto::ConnectSource", "Gmail drafts"), "envelope", "gmail"}}};

QList<QByteArray> tileRoles()
{
    return {"module"_ba, "symbol"_ba, "label"_ba, "on"_ba, "text"_ba, "ok"_ba, "actionLabel"_ba};
}

std::optional<Module> moduleOf(const QString &raw)
{
    for (const auto &group : {QList(kWork.begin(), kWork.end()), QList(kContext.begin(), kContext.end()),
                              QList(kUtilities.begin(), kUtilities.end())}) {
        for (const Module module : group) {
            if (Prefs::rawValue(module) == raw)
                return module;
        }
    }
    return std::nullopt;
}

} // namespace

ConnectSource::ConnectSource(const Needs &needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(needs)
    , m_tokens(needs.prefs, needs.background, needs.keychain)
    , m_status({needs.todos, needs.agents, needs.work, needs.signalsSource, needs.google, needs.prefs, m_tokens, needs.tools})
    , m_calendar({needs.everyday, needs.prefs, needs.clock, needs.google})
    , m_mcp({needs.signalsSource, needs.terminal, needs.clipboard})
    , m_modes({"value"_ba, "text"_ba, "selected"_ba})
    , m_work(tileRoles())
    , m_context(tileRoles())
    , m_utilities(tileRoles())
    , m_sales({"name"_ba, "symbol"_ba})
{
    QList<RowModel::Row> sales;
    for (const SalesConnector &each : kSales)
        sales.append({tr(each.name), QString::fromLatin1(each.symbol)});
    m_sales.setRows(sales);
    connect(&m_tokens, &TokenSettings::changed, this, &ConnectSource::update);
    connect(&m_tokens, &TokenSettings::refreshWanted, this, &ConnectSource::refreshWanted);
}

ConnectSource::~ConnectSource() = default;

QString ConnectSource::title() const
{
    return tr("Connect");
}

QString ConnectSource::symbol() const
{
    return u"puzzlepiece.extension"_s;
}

QUrl ConnectSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Connect/ConnectView.qml"_s);
}

void ConnectSource::chooseMode(const QString &value)
{
    for (const Prefs::Mode mode : kModes) {
        if (QString::number(int(mode)) != value || mode == m_needs.prefs.mode())
            continue;
        m_needs.prefs.selectMode(mode);
        Q_EMIT refreshWanted();
    }
}

AgentsSource *ConnectSource::agents() const
{
    return &m_needs.agents;
}

QList<double> ConnectSource::usageHours() const
{
    const auto &hours = m_needs.signalsSource.tokens().hours;
    const auto most = double(std::max<qint64>(1, std::ranges::max(hours)));
    QList<double> parts;
    for (const qint64 hour : hours)
        parts.append(double(std::max<qint64>(0, hour)) / most);
    return parts;
}

QString ConnectSource::usageMost() const
{
    return compact(std::ranges::max(m_needs.signalsSource.tokens().hours));
}

QString ConnectSource::usageSpoken() const
{
    QStringList words;
    const auto &hours = m_needs.signalsSource.tokens().hours;
    for (size_t i = 0; i < hours.size(); ++i) {
        if (hours.at(i) > 0)
            words.append(tr("%1 to %2: %3").arg(i).arg(i + 1).arg(compact(hours.at(i))));
    }
    return tr("Tokens by the hour: %1").arg(words.join(u", "_s));
}

void ConnectSource::appeared()
{
    m_tokens.reread();
    worldChanged();
}

void ConnectSource::saveToken(const QString &name, const QString &token)
{
    if (token.trimmed().isEmpty())
        return;
    m_needs.prefs.set(Module::Work, true);
    m_tokens.save(name, token);
}

void ConnectSource::set(const QString &module, bool on)
{
    const auto known = moduleOf(module);
    if (!known || m_needs.prefs.isOn(*known) == on)
        return;
    m_needs.prefs.set(*known, on);
    Q_EMIT refreshWanted();
}

void ConnectSource::act(const QString &module)
{
    const auto known = moduleOf(module);
    if (!known || m_status.of(*known, m_open).action.isEmpty())
        return;
    switch (*known) {
    case Module::Agents:
        if (agents()->heard())
            Q_EMIT hooksWanted();
        else
            agents()->tryHearing();
        break;
    case Module::Prs:
        m_needs.clipboard.setText(tr("brew install gh && gh auth login"));
        break;
    case Module::Repos:
        Q_EMIT otherWindowWanted();
        chooseWatchFolders(m_needs.folderPanel, m_needs.prefs, this, [this] {
            m_needs.prefs.set(Module::Repos, true);
            Q_EMIT refreshWanted();
        });
        break;
    default:
        toggle(*known);
    }
}

void ConnectSource::toggle(Prefs::Module form)
{
    if (m_open.remove(form))
        update();
    else
        open(form);
}

void ConnectSource::open(Prefs::Module form)
{
    if (form == Module::Work)
        m_tokens.reread();
    if (form == Module::Calendar)
        m_calendar.reread();
    m_open.insert(form);
    update();
    Q_EMIT formOpened(Prefs::rawValue(form));
}

void ConnectSource::addFollowUp()
{
    Todo todo;
    todo.due = textOf(today(m_needs.clock));
    todo.project = tr("Sales outreach");
    Q_EMIT tabWanted(Tab::Todos);
    m_needs.todos.setDraft(todo);
}

void ConnectSource::openMcpForm()
{
    open(Module::Mcp);
}

void ConnectSource::connectSales(const QString &name)
{
    for (const SalesConnector &each : kSales) {
        if (tr(each.name) == name)
            m_mcp.setName(QString::fromLatin1(each.mcp));
    }
    open(Module::Mcp);
}

void ConnectSource::worldChanged()
{
    m_mcp.update();
    m_calendar.update();
    update();
}

void ConnectSource::update()
{
    const auto rows = [this](const auto &modules) {
        QList<RowModel::Row> result;
        for (const Module module : modules) {
            const ModuleStatus::Status status = m_status.of(module, m_open);
            result.append({Prefs::rawValue(module), ModuleStatus::symbol(module), Prefs::label(module),
                           m_needs.prefs.isOn(module), status.text, status.ok, status.action});
        }
        return result;
    };
    QList<RowModel::Row> modes;
    for (const Prefs::Mode mode : kModes)
        modes.append({QString::number(int(mode)), Prefs::title(mode), mode == m_needs.prefs.mode()});
    m_modes.setRows(modes);
    m_work.setRows(rows(kWork));
    m_context.setRows(rows(kContext));
    m_utilities.setRows(rows(kUtilities));
    const auto &hours = m_needs.signalsSource.tokens().hours;
    const bool counted = std::exchange(m_hoursSeen, hours) != hours;
    if (std::exchange(m_openSeen, m_open) != m_open || counted)
        Q_EMIT changed();
}

} // namespace velto
