#include "Tabs/Home/DayBrief.h"

#include "Core/FirstNames.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Platform/Places.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kSoon = 900; // seconds
constexpr int kNamed = 3;

QStringList withoutEmpty(QStringList texts)
{
    texts.removeAll(QString());
    return texts;
}

bool isSales(const Todo &todo)
{
    return todo.project.contains("sales"_L1, Qt::CaseInsensitive) || todo.project.contains("outreach"_L1, Qt::CaseInsensitive);
}

} // namespace

void DayBrief::agents()
{
    if (!m_page.isOn(Prefs::Module::Agents))
        return;
    AgentsSource &agents = m_page.stores.agents;
    m_page.addUnlessReady(u"agents"_s, u"sparkle"_s, tr("Agents"), agents.state());
    const auto title = [](const Agent &agent) { return agent.title(); };
    const HomeItem::Action show = m_page.openTab(tr("Show"), Tab::Agents);

    if (const QList<Agent> waiting = agents.waiting(); !waiting.isEmpty()) {
        const Agent &first = waiting.first();
        const auto resume = [&agents, id = first.id] { agents.resume(id); };
        m_page.add({u"agents-wait"_s, u"hand.raised.fill"_s, HomeItem::Tone::Warn,
                    waiting.size() == 1 ? tr("%1 is waiting for you").arg(first.title())
                                        : tr("%1 agents are waiting for you").arg(waiting.size()),
                    firstOf(waiting, kNamed, title), u"claude agents --json"_s,
                    first.canResume() ? HomeItem::Action{tr("Resume"), resume} : show});
    }
    if (const QList<Agent> running = agents.running(); !running.isEmpty()) {
        const Agent &first = running.first();
        m_page.add(
            {u"agents-run"_s, u"sparkle"_s, HomeItem::Tone::Info,
             running.size() == 1 ? tr("%1 is working").arg(first.title()) : tr("%1 agents are working").arg(running.size()),
             first.detail.value_or(QString()), u"claude agents --json"_s, show});
    }
    if (const QList<ToolProcess> &tools = agents.tools(); !tools.isEmpty()) {
        const auto name = [](const ToolProcess &tool) { return tool.name; };
        m_page.add({u"tools"_s,
                    u"cpu"_s,
                    HomeItem::Tone::Info,
                    tr("Also running: %1").arg(firstOf(tools, int(tools.size()), name)),
                    {},
                    u"process scan"_s});
    }
}

void DayBrief::calendar()
{
    if (!m_page.isOn(Prefs::Module::Calendar))
        return;
    EverydaySource &everyday = m_page.stores.everyday;
    m_page.addUnlessReady(u"cal"_s, u"calendar"_s, tr("Calendar"), everyday.calendarToShow(), [&everyday] { everyday.unlock(); });
    const std::optional<NextEvent> event = everyday.nextEvent();
    if (!event)
        return;
    const int left = everyday.leftToday();
    const QStringList detail{event->detail(), left >= 2 ? tr("%1 events left today").arg(left) : QString()};
    HomeItem &item = m_page.add(
        {u"cal"_s, u"calendar"_s, m_page.now.msecsTo(event->start) < kSoon * 1000 ? HomeItem::Tone::Warn : HomeItem::Tone::Info,
         u"%1 %2"_s.arg(event->title, event->relative(m_page.now)), withoutEmpty(detail).join(u" · "_s), tr("Calendar")});
    if (event->joinURL)
        item.action = m_page.openLink(tr("Join"), *event->joinURL);
}

void DayBrief::focus()
{
    if (!m_page.isOn(Prefs::Module::Focus))
        return;
    EverydaySource &everyday = m_page.stores.everyday;
    if (everyday.focusEnd()) {
        m_page.add({u"focus"_s,
                    u"timer"_s,
                    HomeItem::Tone::Info,
                    tr("Focusing · %1 left").arg(everyday.focusRemaining()),
                    {},
                    {},
                    HomeItem::Action{tr("Stop"), [&everyday] { everyday.stopFocus(); }}});
        return;
    }
    m_page.add({u"focus"_s,
                u"timer"_s,
                HomeItem::Tone::Off,
                tr("Focus timer"),
                tr("Counts down in the velto and tells you when time's up."),
                {},
                HomeItem::Action{tr("Start %1 min").arg(everyday.focusMinutes()), [&everyday] { everyday.startFocus(); }}});
}

void DayBrief::media()
{
    if (!m_page.isOn(Prefs::Module::Media))
        return;
    EverydaySource &everyday = m_page.stores.everyday;
    const std::optional<NowPlaying> now = everyday.nowPlaying();
    if (!now)
        return;
    m_page.add({u"media"_s, now->playing ? u"music.note"_s : u"pause.circle"_s, HomeItem::Tone::Info, now->track,
                withoutEmpty({now->artist, now->app}).join(u" · "_s), now->app,
                HomeItem::Action{now->playing ? tr("Pause") : tr("Play"), [&everyday] { everyday.playPause(); }}});
}

void DayBrief::todos()
{
    if (!m_page.isOn(Prefs::Module::Todos))
        return;
    const TodosSource &todos = m_page.stores.todos;
    if (!m_page.addUnlessReady(u"todos"_s, u"checklist"_s, tr("Todos"), todos.state()))
        return;
    const QString today = m_page.now.toLocalTime().date().toString(Qt::ISODate);
    QList<Todo> late;
    QList<Todo> due;
    for (const Todo &todo : todos.todos()) {
        if (todo.overdue(today))
            late.append(todo);
        else if (todo.dueNow(today))
            due.append(todo);
    }
    addTodos(late, true);
    addTodos(due, false);
}

void DayBrief::addTodos(const QList<Todo> &todos, bool late)
{
    if (todos.isEmpty())
        return;
    QList<Todo> sales;
    std::ranges::copy_if(todos, std::back_inserter(sales), isSales);
    const QList<Todo> &counted = sales.isEmpty() ? todos : sales;
    const qsizetype count = counted.size();
    QString title;
    if (late && !sales.isEmpty())
        title = count == 1 ? tr("1 sales follow-up is overdue") : tr("%1 sales follow-ups are overdue").arg(count);
    else if (late)
        title = count == 1 ? tr("1 todo is overdue") : tr("%1 todos are overdue").arg(count);
    else if (!sales.isEmpty())
        title = count == 1 ? tr("1 sales follow-up due today") : tr("%1 sales follow-ups due today").arg(count);
    else
        title = count == 1 ? tr("1 todo due today") : tr("%1 todos due today").arg(count);

    TodosSource &store = m_page.stores.todos;
    const Filter filter = late ? Filter::Overdue : Filter::Today;
    const auto show = [open = m_page.ways.openTab, &store, filter] {
        store.shown()->setFilter(filter);
        open(Tab::Todos);
    };
    m_page.add({late ? u"late"_s : u"due"_s, late ? u"exclamationmark.circle"_s : u"checklist"_s,
                late ? HomeItem::Tone::Bad : HomeItem::Tone::Info, title,
                std::ranges::min_element(counted, {}, &Todo::prio)->title, store.label(), HomeItem::Action{tr("Show"), show}});
}

void DayBrief::priority()
{
    const QString priority = m_page.stores.prefs.dailyPriority();
    if (!priority.trimmed().isEmpty())
        m_page.add({u"priority"_s, u"pin.fill"_s, HomeItem::Tone::Info, priority, tr("Today's priority · stored in Velto")});
}

void DayBrief::learning()
{
    const QuillboxSource &quillbox = m_page.stores.quillbox;
    if (!quillbox.mode().isHub() || !quillbox.snapshot().gap)
        return;
    m_page.add({u"gap"_s,
                u"graduationcap"_s,
                HomeItem::Tone::Info,
                tr("Learning card: %1").arg(quillbox.snapshot().gap->question),
                {},
                quillbox.mode().label(m_page.places.home),
                m_page.openTab(tr("Open"), Tab::Quillbox)});
}

} // namespace velto
