#pragma once

#include "Tabs/Home/HomeItem.h"

#include "Core/Prefs.h"
#include "Core/SourceState.h"
#include "Core/Tab.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QUrl>
#include <functional>

namespace velto {

class AgentsSource;
class EverydaySource;
class GlanceSource;
class QuillboxSource;
class SignalsSource;
class TodosSource;
class WorkSource;
class Workspace;
struct Places;
struct Todo;
struct WorkItem;

/// The stores that the brief reads.
struct HomeStores {
    Prefs &prefs;
    AgentsSource &agents;
    EverydaySource &everyday;
    WorkSource &work;
    TodosSource &todos;
    GlanceSource &glances;
    SignalsSource &signalsSource;
    QuillboxSource &quillbox;
};

/// Makes the rows of the brief out of what every other store knows at one moment. UI thread only.
class HomeBrief {
    Q_DECLARE_TR_FUNCTIONS(velto::HomeBrief)
public:
    /// What the buttons of rows do beyond the stores.
    struct Ways {
        std::function<void(Tab)> openTab;
        std::function<void(const QUrl &)> playVideo;
    };
    HomeBrief(const HomeStores &stores, Ways ways, Workspace &workspace, const Places &places, const QDateTime &now);

    /// Every row, the most urgent first; rows of one tone keep the order of their subjects.
    QList<HomeItem> items() &&;

private:
    void agents();
    void calendar();
    void focus();
    void media();
    void pullRequests();
    void workTools();
    void todos();
    void priority();
    void clipboard();
    void builds();
    void transfers();
    void mcp();
    void repos();
    void usage();
    void learning();

    bool isOn(Prefs::Module module) const;
    HomeItem &add(HomeItem item);
    /// The row for a feed that isn't ready. True if the feed is ready.
    bool addUnlessReady(const QString &id, const QString &symbol, const QString &name, const SourceState &state,
                        const std::function<void()> &unlock = {});
    void addTodos(const QList<Todo> &todos, bool late);
    HomeItem::Action openTab(const QString &label, Tab tab) const;
    /// Nothing for a link that may not be opened.
    std::optional<HomeItem::Action> openLink(const QString &label, const QUrl &url) const;
    std::optional<HomeItem::Action> openFirst(const QString &label, const QList<WorkItem> &items) const;

    HomeStores m_stores;
    Ways m_ways;
    Workspace &m_workspace;
    const Places &m_places;
    QDateTime m_now;
    QList<HomeItem> m_items;
};

} // namespace velto
