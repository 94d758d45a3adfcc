// The cost of a frame when the longest question that a request can hold is unfolded and scrolled: parts, layout and drawing
// together. A display leaves 16.7 ms for it; `worst` is the longest frame's CPU time in ms, which other programs don't change
// much.

#include "World.h"

#include "Core/UI.h"
#include "Shell/PeekLine.h"

#include <QGuiApplication>
#include <QJsonObject>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <benchmark/benchmark.h>
#include <ctime>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

constexpr qsizetype kLongest = 256'000;

QString command(int64_t kind)
{
    switch (kind) {
    case 0: // ordinary lines
        return u"    echo \"the quick brown fox\" >> file-of-some-name.txt && make test\n"_s.repeated(kLongest / 68);
    case 1: // one line
        return QString(kLongest, u'x');
    case 2: // nothing but lines
        return u"a\n"_s.repeated(kLongest / 2);
    default: // what becomes a mark, sign by sign; two bytes each
        return u"\u0080\u0081"_s.repeated(kLongest / 4);
    }
}

/// The part under the row of a question, in a window of its own.
struct Unfolded {
    World world;
    UI ui{world.clock, world.prefs};
    PeekLine line{world.hub, world.agents};
    QQuickView view;
    double worst = 0;

    explicit Unfolded(int64_t kind)
    {
        Peek peek;
        peek.text = u"question"_s;
        peek.decide = [](std::optional<bool>) {};
        peek.question = Question{u"api"_s, u"/home/me/api"_s, u"Bash"_s, QJsonObject{{u"command"_s, command(kind)}}};
        world.hub.show(std::move(peek));
        view.engine()->addImportPath(u"qrc:/qt/qml"_s);
        view.setResizeMode(QQuickView::SizeRootObjectToView);
        view.setColor(Qt::black);
        view.setInitialProperties({{u"line"_s, QVariant::fromValue(&line)}, {u"ui"_s, QVariant::fromValue(&ui)}});
        view.resize(484, 300);
        view.show();
        frame([] {});
        worst = 0;
    }
    /// Applies the change, lays everything out and draws it.
    template <typename Change> void frame(Change change)
    {
        const std::clock_t begun = std::clock();
        change();
        QCoreApplication::processEvents();
        benchmark::DoNotOptimize(view.grabWindow().constBits());
        worst = std::max(worst, 1e3 * double(std::clock() - begun) / CLOCKS_PER_SEC);
    }
    void unfold() { view.setSource(QUrl(u"qrc:/qt/qml/Velto/Shell/UnfoldedQuestion.qml"_s)); }
};

void kinds(benchmark::internal::Benchmark *benchmark)
{
    benchmark->DenseRange(0, 3)->Unit(benchmark::kMillisecond);
}

/// From the pointer's rest to the first frame, and the frames after it.
void unfolding(benchmark::State &state)
{
    Unfolded unfolded(state.range(0));
    for (auto _ : state) {
        unfolded.frame([&] { unfolded.unfold(); });
        state.PauseTiming();
        for (int i = 0; i < 10; ++i)
            unfolded.frame([] {});
        unfolded.view.setSource({});
        state.ResumeTiming();
    }
    state.counters["worst"] = unfolded.worst;
}
BENCHMARK(unfolding)->Apply(kinds);

/// By 60 points a frame, onto text not shown before.
void scrolling(benchmark::State &state)
{
    Unfolded unfolded(state.range(0));
    unfolded.unfold();
    unfolded.frame([] {});
    unfolded.worst = 0;
    for (auto _ : state)
        unfolded.frame([&] { QMetaObject::invokeMethod(unfolded.view.rootObject(), "scroll", Q_ARG(double, 60.0)); });
    state.counters["worst"] = unfolded.worst;
}
BENCHMARK(scrolling)->Apply(kinds);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
