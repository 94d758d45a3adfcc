// The cost of the todo list: all that the views read after a change, a key in the search field, a step of the selection, a todo
// ticked off and restored. The complexity shows how it grows from 100 to 100,000 todos.

#include "TodosDesk.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QString kToday = u"2026-11-21"_s;

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->RangeMultiplier(10)->Range(100, 100'000)->Complexity()->Unit(benchmark::kMicrosecond);
}

/// Of a new list, with nothing cached.
void groupsBadgeAndSummary(benchmark::State &state)
{
    const QList<Todo> list = benchTodos(int(state.range(0)));
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
    TodosDesk desk(int(state.range(0)));
    const QStringList typed{u"custom"_s, u"customer"_s, u"customer 1"_s, u"customer 12"_s};
    int key = 0;
    for (auto _ : state)
        desk.source->shown()->setSearch(typed[key++ % typed.size()]);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(searchKeystroke)->Apply(sizes);

void firstSearchKeystroke(benchmark::State &state)
{
    TodosDesk desk(int(state.range(0)));
    for (auto _ : state) {
        desk.source->shown()->setSearch(u"c"_s);
        desk.source->shown()->setSearch({});
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(firstSearchKeystroke)->Apply(sizes);

void anotherFilter(benchmark::State &state)
{
    TodosDesk desk(int(state.range(0)));
    bool all = false;
    for (auto _ : state)
        desk.source->shown()->setFilter(std::exchange(all, !all) ? Filter::All : Filter::Today);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(anotherFilter)->Apply(sizes);

void stepOfTheSelection(benchmark::State &state)
{
    TodosDesk desk(int(state.range(0)));
    int by = 1;
    for (auto _ : state)
        desk.source->shown()->move(std::exchange(by, -by));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(stepOfTheSelection)->Apply(sizes);

void oneDoneAndHadBack(benchmark::State &state)
{
    TodosDesk desk(int(state.range(0)));
    const Todo todo = desk.source->shown()->flat().value(desk.source->shown()->flat().size() / 2);
    for (auto _ : state) {
        desk.source->done(todo);
        desk.source->undoDone();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(oneDoneAndHadBack)->Apply(sizes);

/// All the work of saving one change, except for the disk's.
void encodeTheFile(benchmark::State &state)
{
    const QList<Todo> list = benchTodos(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(encodeTodos(list));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(encodeTheFile)->Apply(sizes);

} // namespace

BENCHMARK_MAIN();
