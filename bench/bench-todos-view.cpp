// The cost of a frame of the Todos tab after a key in the search field, a step of the selection, a turn of the wheel, a todo
// ticked off: the change in the store, the layout and the drawing together. A display leaves 16.7 ms for it.

#include "TodosDesk.h"

#include "Core/Prefs.h"
#include "Core/UI.h"
#include "Platform/Fake/FakePlatform.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <benchmark/benchmark.h>
#include <map>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

struct Tab {
    TodosDesk desk;
    FakeDefaults defaults;
    Prefs prefs{defaults, desk.places, desk.clock};
    UI ui{desk.clock, prefs};
    QQuickView view;

    explicit Tab(int count)
        : desk(count)
    {
        view.engine()->addImportPath(u"qrc:/qt/qml"_s);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setColor(Qt::black);
        view.setInitialProperties({{u"source"_s, QVariant::fromValue(desk.source.get())}, {u"ui"_s, QVariant::fromValue(&ui)}});
        view.setSource(desk.source->makeView());
        view.resize(732, 408);
        view.show();
        frame();
    }
    /// Lays everything out and draws it.
    void frame()
    {
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(view.grabWindow().constBits());
    }
};

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(100)->Arg(10'000)->Unit(benchmark::kMillisecond);
}

/// One for each size, kept: the toolkit deletes rows later, and they must not outlive their view.
std::map<int64_t, std::unique_ptr<Tab>> tabs;

Tab &tabOf(const benchmark::State &state)
{
    std::unique_ptr<Tab> &tab = tabs[state.range(0)];
    if (!tab)
        tab = std::make_unique<Tab>(int(state.range(0)));
    tab->desk.source->shown()->setSearch({});
    tab->desk.source->shown()->setOpenID(std::nullopt);
    tab->desk.source->shown()->setSelectedID(std::nullopt);
    tab->frame();
    return *tab;
}

void firstFrame(benchmark::State &state)
{
    for (auto _ : state)
        const Tab tab(int(state.range(0)));
}
BENCHMARK(firstFrame)->Apply(sizes);

/// The share that every figure below contains.
void frameWithoutAChange(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    for (auto _ : state)
        tab.frame();
}
BENCHMARK(frameWithoutAChange)->Apply(sizes);

void searchKeystroke(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    const QStringList typed{u"c"_s, u"cu"_s, u"customer"_s, u"customer 1"_s, u"customer 12"_s, u"customer 1"_s, {}};
    int key = 0;
    for (auto _ : state) {
        tab.desk.source->shown()->setSearch(typed[key++ % typed.size()]);
        tab.frame();
    }
}
BENCHMARK(searchKeystroke)->Apply(sizes);

void stepOfTheSelection(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    for (auto _ : state) {
        tab.desk.source->shown()->move(1);
        tab.frame();
    }
}
BENCHMARK(stepOfTheSelection)->Apply(sizes);

QQuickItem *listBelow(QQuickItem *item)
{
    if (item->inherits("QQuickListView"))
        return item;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *list = listBelow(child))
            return list;
    }
    return nullptr;
}

/// By 40 points a frame, onto rows not shown before.
void scrolling(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    QQuickItem *list = listBelow(tab.view.contentItem());
    double place = 0;
    for (auto _ : state) {
        const double end = list->property("contentHeight").toDouble() - list->height();
        place = place + 40 < end ? place + 40 : 0;
        list->setProperty("contentY", list->property("originY").toDouble() + place);
        tab.frame();
    }
}
BENCHMARK(scrolling)->Apply(sizes);

void rowOpened(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    tab.desk.source->shown()->move(1);
    for (auto _ : state) {
        tab.desk.source->shown()->toggleSelected();
        tab.frame();
    }
}
BENCHMARK(rowOpened)->Apply(sizes);

void oneDone(benchmark::State &state)
{
    Tab &tab = tabOf(state);
    tab.desk.source->shown()->move(1);
    for (auto _ : state) {
        tab.desk.source->finishSelected();
        tab.frame();
        tab.desk.source->undoDone();
        tab.frame();
    }
}
BENCHMARK(oneDone)->Apply(sizes);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    tabs.clear();
    return 0;
}
