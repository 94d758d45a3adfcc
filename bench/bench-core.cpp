// What the stores spend on what happens most often: a hook call, a listing, a refresh that finds no change or one change.

#include "Core/RowModel.h"
#include "Hooks/HookEvent.h"
#include "Hooks/HookRequest.h"
#include "Hooks/SettingsEdit.h"
#include "Tabs/Agents/Agent.h"

#include <QDateTime>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

QByteArray hookBody()
{
    return R"({"session_id":"aefe0d0b-131d-43a7-b83d-daf04de24178","cwd":"/home/me/proj","permission_mode":"default",)"
           R"("hook_event_name":"PermissionRequest","tool_name":"Bash","tool_input":{"command":")"
        + QByteArray(800, 'x') + R"("}})";
}

QByteArray listing(int sessions)
{
    QByteArray json = "[";
    for (int i = 0; i < sessions; ++i) {
        json += i ? "," : "";
        json +=
            u"{\"id\":\"s%1\",\"name\":\"session %1\",\"state\":\"blocked\",\"cwd\":\"/home/me/p%1\",\"startedAt\":%2}"_s.arg(i)
                .arg(1795226514492LL + i)
                .toUtf8();
    }
    return json + "]";
}

QList<RowModel::Row> rows(int count)
{
    QList<RowModel::Row> rows;
    for (int i = 0; i < count; ++i)
        rows.append({u"s%1"_s.arg(i), u"session %1"_s.arg(i), u"Waiting"_s, u"12 min"_s});
    return rows;
}

void hookCall(benchmark::State &state)
{
    const QByteArray token(48, 'a');
    const QByteArray body = hookBody();
    const QByteArray request = "POST /permission HTTP/1.1\r\nHost: 127.0.0.1:4747\r\nX-Velto-Token: " + token
        + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    const QDateTime now = QDateTime::currentDateTime();
    for (auto _ : state) {
        HookRequest reader(token);
        benchmark::DoNotOptimize(reader.feed(request, false));
        benchmark::DoNotOptimize(HookEvent::parse(body, now));
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * request.size());
}
BENCHMARK(hookCall);

void readListing(benchmark::State &state)
{
    const QByteArray json = listing(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(parseAgents(json));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(readListing)->Arg(50)->Arg(500)->Arg(5000)->Complexity();

void sameRows(benchmark::State &state)
{
    RowModel model({"id"_ba, "title"_ba, "word"_ba, "age"_ba});
    // Two readings of the same data share no memory.
    const auto first = rows(int(state.range(0)));
    const auto second = rows(int(state.range(0)));
    for (auto _ : state) {
        model.setRows(first);
        model.setRows(second);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(sameRows)->Arg(50)->Arg(500)->Arg(5000)->Complexity();

void oneRowMoves(benchmark::State &state)
{
    RowModel model({"id"_ba, "title"_ba, "word"_ba, "age"_ba});
    const auto before = rows(int(state.range(0)));
    auto after = before;
    after.move(after.size() - 1, 0);
    for (auto _ : state) {
        model.setRows(before);
        model.setRows(after);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(oneRowMoves)->Arg(50)->Arg(500)->Arg(5000)->Complexity();

void editSettings(benchmark::State &state)
{
    QByteArray settings = "{\"permissions\":{\"allow\":[";
    while (settings.size() < state.range(0))
        settings += "\"Bash(npm run something:*)\",";
    settings += "\"x\"]},\"number\":1e5}";
    for (auto _ : state)
        benchmark::DoNotOptimize(withoutHooks(settings, {{"Stop", "curl", {}}}, "127.0.0.1:4747/"));
    state.SetBytesProcessed(int64_t(state.iterations()) * settings.size());
}

BENCHMARK(editSettings)->Arg(10'000)->Arg(1'000'000);

} // namespace

BENCHMARK_MAIN();
