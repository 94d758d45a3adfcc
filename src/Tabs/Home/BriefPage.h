#pragma once

#include "Core/Prefs.h"
#include "Core/SourceState.h"
#include "Core/Tab.h"
#include "Tabs/Home/HomeItem.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QList>
#include <QUrl>
#include <functional>

namespace velto {

class AgentsSource;
class EverydaySource;
class FileWriter;
class GlanceSource;
class QuillboxSource;
class SignalsSource;
class TodosSource;
class WorkSource;
class Workspace;
struct Places;

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

/// What the buttons of rows do beyond the stores.
struct BriefWays {
    std::function<void(Tab)> openTab;
    std::function<void(const QUrl &)> playVideo;
};

/// The sheet that a brief is written on: what it reads, at one moment, and the rows so far. UI thread only.
class BriefPage {
    Q_DECLARE_TR_FUNCTIONS(velto::BriefPage)
public:
    const HomeStores stores;
    const BriefWays ways;
    Workspace &workspace;
    const Places &places;
    const QDateTime now;
    QList<HomeItem> items = {};

    bool isOn(Prefs::Module module) const;
    HomeItem &add(HomeItem item);
    /// The row for a feed that isn't ready. True if the feed is ready.
    bool addUnlessReady(const QString &id, const QString &symbol, const QString &name, const SourceState &state,
                        const std::function<void()> &unlock = {});
    /// What the user has entered and could lose, or may think lost.
    void addFiles(FileWriter &writer);
    HomeItem::Action openTab(const QString &label, Tab tab) const;
    /// Nothing for a link that may not be opened.
    std::optional<HomeItem::Action> openLink(const QString &label, const QUrl &url) const;
};

} // namespace velto
