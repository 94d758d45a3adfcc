// Whether the panel keeps its frame rate while every feed loads at once: an open tab with something moving in it, first at
// rest, then while all stores read a home folder full of work and services with long answers. Prints one JSON object: gaps
// between frames in ms, and the longest turn of the UI thread. Usage: every-feed HOME SECONDS TAB

#include "FeedsMachine.h"

#include "Core/UI.h"
#include "Feeds/Everyday/EverydaySource.h"
#include "Feeds/Glances/GlanceSource.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Feeds/Work/WorkSource.h"
#include "Hooks/HookListener.h"
#include "Hub/Stores.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "Shell/VeltoPanel.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

double milliseconds(clockid_t clock)
{
    timespec now{};
    ::clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

/// Finds the longest turn of the UI thread, by its own processor time, so that a busy machine doesn't count. Other threads call
/// this too.
class WatchedApplication final : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;
    double longestTurn = 0;
    QByteArray longestReceiver;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (QThread::currentThread() != thread() || m_depth > 0)
            return QGuiApplication::notify(receiver, event);
        const QByteArray name = receiver->metaObject()->className() + QByteArray(" ") + QByteArray::number(int(event->type()));
        const double begin = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        ++m_depth;
        const bool result = QGuiApplication::notify(receiver, event);
        --m_depth;
        const double spent = milliseconds(CLOCK_THREAD_CPUTIME_ID) - begin;
        if (spent > longestTurn) {
            longestTurn = spent;
            longestReceiver = name;
        }
        return result;
    }

private:
    int m_depth = 0;
};

/// The open panel.
struct Panel {
    Panel(Machinery &machinery, Stores &stores)
        : ui(machinery.clock, stores.prefs)
        , strip({stores.hub, machinery.clock, stores.prefs, stores.everyday, stores.agents, stores.todos})
        , peekLine(stores.hub, stores.agents)
        , outline(stores.hub, ui, strip)
        , contents({stores.hub, stores.prefs, stores.everyday, stores.agents, stores.todos, stores.quillbox})
        , window(machinery.clock, ui, outline)
    {
        window.engine()->addImportPath(u"qrc:/qt/qml"_s);
        window.setInitialProperties({
            {u"ui"_s, QVariant::fromValue(&ui)},
            {u"strip"_s, QVariant::fromValue(&strip)},
            {u"peekLine"_s, QVariant::fromValue(&peekLine)},
            {u"outline"_s, QVariant::fromValue(&outline)},
            {u"contents"_s, QVariant::fromValue(&contents)},
            {u"accessibility"_s, QVariant::fromValue(static_cast<Accessibility *>(&machinery.accessibility))},
        });
        window.setSource(QUrl(u"qrc:/qt/qml/Velto/Shell/VeltoView.qml"_s));
        window.resize(780, 520);
        ui.setPinned(true);
        ui.setExpanded(true);
        window.show();
        QQmlComponent mover(window.engine());
        mover.setData(
            "import QtQuick; Rectangle { width: 8; height: 8; color: \"#fff\"; NumberAnimation on x { from: 0; to: 600; "
            "duration: 1000; loops: Animation.Infinite } }",
            {});
        m_mover.reset(qobject_cast<QQuickItem *>(mover.create()));
        m_mover->setParentItem(window.contentItem());
    }

    UI ui;
    CollapsedStrip strip;
    PeekLine peekLine;
    PanelOutline outline;
    PanelContents contents;
    VeltoPanel window;

private:
    std::unique_ptr<QQuickItem> m_mover;
};

/// What was measured over a period.
struct Frames {
    double last = 0;
    double spent = 0; ///< the UI thread's own processor time at the last frame
    double busiest = 0; ///< the most of it between two frames
    QList<double> gaps;

    void drawn()
    {
        const double now = milliseconds(CLOCK_MONOTONIC);
        const double spentNow = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        if (last > 0) {
            gaps.append(now - last);
            busiest = std::max(busiest, spentNow - spent);
        }
        last = now;
        spent = spentNow;
    }
    QJsonObject report(WatchedApplication &application)
    {
        std::ranges::sort(gaps);
        const auto late = std::ranges::count_if(gaps, [](double gap) { return gap > 33.4; });
        QJsonObject figures{{u"frames"_s, gaps.size()},
                            {u"median"_s, gaps.value(gaps.size() / 2)},
                            {u"longest"_s, gaps.isEmpty() ? 0 : gaps.last()},
                            {u"late"_s, qint64(late)},
                            {u"busiest"_s, busiest},
                            {u"turn"_s, application.longestTurn},
                            {u"turnOf"_s, QString::fromLatin1(application.longestReceiver)}};
        gaps.clear();
        last = busiest = 0;
        application.longestTurn = 0;
        return figures;
    }
};

void pass(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

/// What the feeds found, so that an idle run isn't taken for a fast one.
QJsonObject found(const Stores &stores)
{
    const SignalsSource &slow = stores.signalsSource;
    return {{u"tokens"_s, slow.tokensUsed()},
            {u"servers"_s, slow.mcpCount()},
            {u"repositories"_s, slow.repos().size()},
            {u"reviews"_s, stores.work.prs().size()},
            {u"issues"_s, stores.work.issues().size()},
            {u"mentions"_s, stores.work.mentions().size()},
            {u"meetings"_s, stores.google.meetings().size()},
            {u"transfers"_s, stores.glances.activeTransfers()},
            {u"builds"_s, stores.glances.failedBuilds()},
            {u"clipboard"_s, stores.glances.clipboard() ? stores.glances.clipboard()->title : QString()}};
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4)
        return 2;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    WatchedApplication application(argc, argv);
    const int span = int(1000 * QByteArray(argv[2]).toDouble());
    Machinery machinery(QString::fromLocal8Bit(argv[1]));
    QJsonObject figures;
    {
        Stores stores(machinery.desktop(), nullptr, [] { return QuillboxMode(); });
        Panel panel(machinery, stores);
        panel.contents.open(QString::fromLatin1(argv[3]));
        Frames frames;
        QObject::connect(&panel.window, &QQuickWindow::frameSwapped, &application, [&frames] { frames.drawn(); });
        // The first readings began with the stores, while the window started.
        pass(span);
        figures[u"start"_s] = frames.report(application);
        figures[u"found"_s] = found(stores);
        pass(span);
        figures[u"rest"_s] = frames.report(application);
        QTimer::singleShot(0, &application, [&stores] {
            stores.hub.refresh(true);
            stores.glances.refresh();
            stores.google.refresh();
        });
        pass(span);
        figures[u"loading"_s] = frames.report(application);
        machinery.tools.stop();
    }
    std::printf("%s\n", QJsonDocument(figures).toJson(QJsonDocument::Compact).constData());
    return 0;
}
