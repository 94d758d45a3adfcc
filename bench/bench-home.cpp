// The cost of the brief with every feed full: 500 sessions, 10,000 todos, 200 repositories, a page of MCP servers. Target: its
// rows in under 1 ms; everything the views read comes from the same computation.

#include "World.h"

#include "Tabs/Home/HomeBrief.h"
#include "Tabs/Todos/TodoJson.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

constexpr int kSessions = 500;
constexpr int kTodos = 10'000;
constexpr int kRepositories = 200;
constexpr int kServers = 50;

QByteArray todos()
{
    QList<Todo> list;
    const QDate day = FakeClock().wallTime().toLocalTime().date();
    for (int i = 0; i < kTodos; ++i) {
        Todo todo;
        todo.id = i + 1;
        todo.title = u"Answer the letter of customer %1"_s.arg(i);
        todo.due = i % 2 == 0 ? textOf(day.addDays(i % 40 - 20)) : QString();
        todo.project = i % 50 == 0 ? u"Sales outreach"_s : u"project %1"_s.arg(i % 20);
        todo.prio = 1 + i % 3;
        list.append(todo);
    }
    return encodeTodos(list);
}

struct FullDesk {
    QTemporaryDir folder;
    World world{{{u"/home/me/data/todos.json"_s, todos()}}};

    FullDesk()
    {
        world.tools.installed.insert(u"git"_s);
        for (int i = 0; i < kRepositories; ++i) {
            const QString path = u"%1/r%2"_s.arg(folder.path()).arg(i);
            QDir().mkpath(path + "/.git"_L1);
            world.tools.answers.insert(u"git -C %1 status --porcelain=v2 --branch"_s.arg(path),
                                       {true, "# branch.head main\n# branch.ab +2 -0\n1 .M file\n? other\n", {}});
        }
        QByteArray servers;
        for (int i = 0; i < kServers; ++i)
            servers += u"server %1: https://mcp.example.com/%1 (HTTP) - %2\n"_s.arg(i)
                           .arg(i % 5 ? u"✔ Connected"_s : u"✘ Failed to connect"_s)
                           .toUtf8();
        world.tools.answers.insert(u"claude mcp list"_s, {true, servers, {}});
        world.setSessions(kSessions / 2, kSessions / 2);
        world.prefs.setRepoRoots({folder.path()});
        for (const auto module : {Prefs::Module::Repos, Prefs::Module::Mcp, Prefs::Module::Calendar})
            world.prefs.set(module, true);
        world.prefs.setDailyPriority(u"Ship it"_s);
        world.prefs.setMeetingTitle(u"Review"_s);
        world.prefs.setMeetingStart(world.clock.wallTime().addSecs(600));
        world.everyday.loadCalendar();
        world.hub.refresh(true);
        world.background.finishAll();
    }
    /// How much of the data has arrived.
    std::string filling() const
    {
        return u"%1 sessions, %2 todos, %3 repositories"_s.arg(world.agents.running().size() + world.agents.waiting().size())
            .arg(world.todos.todos().size())
            .arg(world.signalsSource.reposNeedingWork().size())
            .toStdString();
    }
};

FullDesk &desk()
{
    static FullDesk desk;
    return desk;
}

void itemsOfTheBrief(benchmark::State &state)
{
    World &world = desk().world;
    const HomeStores stores{world.prefs, world.agents,  world.everyday,      world.work,
                            world.todos, world.glances, world.signalsSource, world.quillbox};
    state.SetLabel(desk().filling());
    for (auto _ : state)
        benchmark::DoNotOptimize(
            homeBrief(stores, {}, world.workspace, world.writer, world.places, world.clock.wallTime()).size());
}
BENCHMARK(itemsOfTheBrief)->Unit(benchmark::kMicrosecond);

/// After a change of any store: the rows, the groups, the badge and the headline.
void allThatTheViewsRead(benchmark::State &state)
{
    HomeSource &home = desk().world.home;
    for (auto _ : state) {
        home.worldChanged();
        benchmark::DoNotOptimize(home.badge() + home.headlineText().size() + int(home.headlineTone()) + home.items().size());
    }
}
BENCHMARK(allThatTheViewsRead)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
