#include "Tabs/Connect/ModuleStatus.h"

#include "Core/Texts.h"
#include "Feeds/Calendar/GoogleCalendar.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Feeds/Work/TokenSettings.h"
#include "Feeds/Work/WorkSource.h"
#include "Platform/ToolRunner.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Todos/TodoDates.h"
#include "Tabs/Todos/TodosSource.h"

#include <QLocale>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The words for a state other than ready.
QString wordsOf(const SourceState &state)
{
    switch (state.kind()) {
    case SourceState::Kind::Unavailable:
        return u"%1 %2"_s.arg(state.reason(), state.fix());
    case SourceState::Kind::Failed:
        return state.message();
    default:
        return {};
    }
}

} // namespace

ModuleStatus::ModuleStatus(const Needs &needs)
    : m_needs(needs)
{
}

QString ModuleStatus::symbol(Prefs::Module module)
{
    switch (module) {
    case Prefs::Module::Agents:
        return u"sparkle"_s;
    case Prefs::Module::Todos:
        return u"checklist"_s;
    case Prefs::Module::Calendar:
        return u"calendar"_s;
    case Prefs::Module::Prs:
        return u"arrow.triangle.pull"_s;
    case Prefs::Module::Work:
        return u"briefcase"_s;
    case Prefs::Module::Media:
        return u"music.note"_s;
    case Prefs::Module::Focus:
        return u"timer"_s;
    case Prefs::Module::Usage:
        return u"gauge.with.dots.needle.50percent"_s;
    case Prefs::Module::Mcp:
        return u"point.3.connected.trianglepath.dotted"_s;
    case Prefs::Module::Repos:
        break;
    }
    return u"arrow.triangle.branch"_s;
}

ModuleStatus::Status ModuleStatus::of(Prefs::Module module, const QSet<Prefs::Module> &open) const
{
    switch (module) {
    case Prefs::Module::Agents:
        return agents();
    case Prefs::Module::Todos:
        return {m_needs.todos.label()};
    case Prefs::Module::Calendar:
        return calendar(open.contains(module));
    case Prefs::Module::Prs:
        return pullRequests();
    case Prefs::Module::Work:
        return work(open.contains(module));
    case Prefs::Module::Media:
        return {tr("Music or Spotify, when they're open.")};
    case Prefs::Module::Focus:
        return {tr("A countdown beside the camera.")};
    case Prefs::Module::Usage:
        return usage(open.contains(module));
    case Prefs::Module::Mcp:
        return mcp(open.contains(module));
    case Prefs::Module::Repos:
        break;
    }
    return repos();
}

ModuleStatus::Status ModuleStatus::usage(bool open) const
{
    if (!m_needs.tools.toolInstalled(u"claude"_s))
        return {tr("Needs Claude Code."), false};
    const SignalsSource &source = m_needs.signalsSource;
    if (source.turns() == 0)
        return {tr("Read from Claude Code on this Mac.")};
    return {tr("%1 tokens over %2 replies today.").arg(compact(source.tokensUsed()), QLocale().toString(source.turns())), true,
            open ? tr("Hide") : tr("By the hour")};
}

ModuleStatus::Status ModuleStatus::agents() const
{
    if (!m_needs.tools.toolInstalled(u"claude"_s))
        return {tr("Claude Code isn't installed. The scan still finds Codex, Cursor and Ollama."), false};
    if (const SourceState &hearing = m_needs.agents.hearing(); hearing != SourceState::ready())
        return {wordsOf(hearing), false, tr("Try again")};
    if (!m_needs.agents.hooksInstalled())
        return {tr("Connect for instant alerts and Allow/Deny from the velto."), false, tr("Connect")};
    return {tr("Live alerts and Allow/Deny are on.")};
}

ModuleStatus::Status ModuleStatus::calendar(bool open) const
{
    const auto withAction = [open](const QString &text, bool ok) {
        return Status{text, ok, open ? tr("Done") : ok ? tr("Change") : tr("Set up")};
    };
    if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google) {
        if (m_needs.google.locked())
            return withAction(tr("The keyring is locked."), false);
        if (!m_needs.google.linked())
            return withAction(tr("Connect Google Calendar. No Mac Calendar access."), false);
        return withAction(tr("Google Calendar connected · read-only."), true);
    }
    if (m_needs.prefs.meetingTitle().trimmed().isEmpty())
        return withAction(tr("Add a meeting yourself. No Mac Calendar access."), false);
    return withAction(tr("Added by you · %1").arg(shortDateTime(m_needs.prefs.meetingStart())), true);
}

ModuleStatus::Status ModuleStatus::pullRequests() const
{
    if (!m_needs.tools.toolInstalled(u"gh"_s))
        return {tr("Install the GitHub CLI, then sign in."), false, tr("Copy install command")};
    if (const QString words = wordsOf(m_needs.work.prState()); !words.isEmpty())
        return {words, false};
    return {tr("Through the GitHub CLI you're signed in to.")};
}

ModuleStatus::Status ModuleStatus::work(bool open) const
{
    const QString action = open ? tr("Done") : tr("Manage");
    const int tokens = m_needs.tokens.count();
    if (m_needs.work.workState().isLocked())
        return {tr("The keyring is locked."), false, action};
    if (tokens == 0)
        return {tr("Paste a Linear, Jira or Slack token."), false, action};
    return {tr("%1 connected. %2").arg(tokens).arg(wordsOf(m_needs.work.workState())).trimmed(), true, action};
}

ModuleStatus::Status ModuleStatus::mcp(bool open) const
{
    if (!m_needs.tools.toolInstalled(u"claude"_s))
        return {tr("Needs Claude Code."), false};
    const SignalsSource &slow = m_needs.signalsSource;
    const QString action = open ? tr("Hide") : tr("Set up");
    if (const qsizetype failing = slow.mcpFailing().size(); failing > 0)
        return {tr("%1 failed · open to diagnose.").arg(failing), false, action};
    if (const qsizetype signIn = slow.mcpNeedsAuth().size(); signIn > 0)
        return {tr("%1 need sign-in.").arg(signIn), false, action};
    return {tr("%1 connected.").arg(slow.mcp().size()), true, action};
}

ModuleStatus::Status ModuleStatus::repos() const
{
    const qsizetype folders = m_needs.prefs.repoRoots().size();
    if (folders == 0)
        return {tr("Choose the folders you keep code in."), false, tr("Add folder")};
    if (!m_needs.prefs.mayLookAtRepos())
        return {tr("Waits until the welcome is finished."), false, tr("Add folder")};
    return {tr("%1 folders watched.").arg(folders), true, tr("Add folder")};
}

} // namespace velto
