// What the list of todos costs: all that the views read after a change, a key in the search field, a step of the selection, a
// todo ticked off and had back. Complexity tells how it grows from 100 to 100,000 todos.

#include "Core/Http.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Machine.h"
#include "Platform/Places.h"
#include "Tabs/Quillbox/HubClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QString kToday = u"2026-11-21"_s;

/// Half of them due within weeks, in twenty projects.
QList<Todo> todos(int count)
{
    QList<Todo> list;
    const QDate day(2026, 11, 1);
    for (int i = 0; i < count; ++i) {
        Todo todo;
        todo.id = i + 1;
        todo.title = u"Answer the letter of customer %1"_s.arg(i * 7919 % count);
        todo.details = u"They asked for the second time, and would like to have it in writing. See the notes of last week."_s;
        todo.due = i % 2 == 0 ? textOf(day.addDays(i % 40)) : QString();
        todo.who = i % 5 == 0 ? u"Kim"_s : u"me"_s;
        todo.project = i % 3 == 0 ? QString() : u"project %1"_s.arg(i % 20);
        todo.scope = i % 10 == 0 ? u"personal"_s : u"office"_s;
        todo.prio = 1 + i % 3;
        list.append(todo);
    }
    return list;
}

struct NamelessMachine final : Machine {
    QString displayName() const override { return {}; }
};

struct Desk {
    FakeClock clock;
    FakeBackground background;
    FakeToolRunner tools;
    FakeFiles files;
    Places places{u"/home/me"_s, {}, u"/home/me/data"_s, {}};
    NamelessMachine machine;
    Http http;
    HubClient client{http, background};
    QuillboxSource quillbox{{clock, machine, client, places.home}};
    std::unique_ptr<TodosSource> source;

    explicit Desk(int count)
    {
        files.contents.insert(u"/home/me/data/todos.json"_s, encodeTodos(todos(count)));
        source = std::make_unique<TodosSource>(TodosSource::Needs{clock, background, tools, files, places, quillbox});
        source->setFilter(Filter::All);
    }
};

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->RangeMultiplier(10)->Range(100, 100'000)->Complexity()->Unit(benchmark::kMicrosecond);
}

/// Of a list that nothing is known of yet.
void groupsBadgeAndSummary(benchmark::State &state)
{
    const QList<Todo> list = todos(int(state.range(0)));
    TodoLists lists;
    for (auto _ : state) {
        lists.setTodos(list);
        const TodoLists::Result result = lists.cut({u"office"_s, Filter::All, {}, kToday});
        benchmark::DoNotOptimize(result.groups.size() + result.dueNow + summaryText(result).size());
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(groupsBadgeAndSummary)->Apply(sizes);

void searchKeystroke(benchmark::State &state)
{
    Desk desk(int(state.range(0)));
    const QStringList typed{u"custom"_s, u"customer"_s, u"customer 1"_s, u"customer 12"_s};
    int key = 0;
    for (auto _ : state)
        desk.source->setSearch(typed[key++ % typed.size()]);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(searchKeystroke)->Apply(sizes);

void firstSearchKeystroke(benchmark::State &state)
{
    Desk desk(int(state.range(0)));
    for (auto _ : state) {
        desk.source->setSearch(u"c"_s);
        desk.source->setSearch({});
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(firstSearchKeystroke)->Apply(sizes);

void anotherFilter(benchmark::State &state)
{
    Desk desk(int(state.range(0)));
    bool all = false;
    for (auto _ : state)
        desk.source->setFilter(std::exchange(all, !all) ? Filter::All : Filter::Today);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(anotherFilter)->Apply(sizes);

void stepOfTheSelection(benchmark::State &state)
{
    Desk desk(int(state.range(0)));
    int by = 1;
    for (auto _ : state)
        desk.source->move(std::exchange(by, -by));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(stepOfTheSelection)->Apply(sizes);

void oneDoneAndHadBack(benchmark::State &state)
{
    Desk desk(int(state.range(0)));
    const Todo todo = desk.source->flat().value(desk.source->flat().size() / 2);
    for (auto _ : state) {
        desk.source->done(todo);
        desk.source->undoDone();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(oneDoneAndHadBack)->Apply(sizes);

/// All that is written to the file after one change, but for the disk.
void encodeTheFile(benchmark::State &state)
{
    const QList<Todo> list = todos(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeTodos(list));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(encodeTheFile)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
