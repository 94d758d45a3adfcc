#pragma once

#include "Core/RowModel.h"
#include "Core/VeltoSource.h"

#include <QObject>
#include <QString>
#include <optional>

namespace velto {

class AgentsSource;
class EverydaySource;
class Hub;
class Prefs;
class QuillboxSource;
class TodosSource;

/// What the open panel shows around the content of a tab: the tabs, the highlights, the words of its buttons. UI thread only.
class PanelContents : public QObject {
    Q_OBJECT
    /// tab, title, symbol, badge, view, store
    Q_PROPERTY(QAbstractItemModel *tabs READ tabs CONSTANT FINAL)
    /// The place of the selected tab among the visible ones.
    Q_PROPERTY(int selected READ selected NOTIFY changed FINAL)
    /// chip, symbol, text, tab
    Q_PROPERTY(QAbstractItemModel *highlights READ highlights CONSTANT FINAL)
    Q_PROPERTY(bool nothingNeedsYou READ nothingNeedsYou NOTIFY changed FINAL)
    Q_PROPERTY(bool recording READ recording NOTIFY changed FINAL)
    Q_PROPERTY(QString refreshLabel READ refreshLabel NOTIFY changed FINAL)
public:
    /// What the panel reads; all of it outlives this.
    struct Needs {
        Hub &hub;
        const Prefs &prefs;
        const EverydaySource &everyday;
        AgentsSource &agents;
        const TodosSource &todos;
        QuillboxSource &quillbox;
    };
    explicit PanelContents(const Needs &needs, QObject *parent = nullptr);

    QAbstractItemModel *tabs() { return &m_tabs; }
    int selected() const { return m_now.selected; }
    QAbstractItemModel *highlights() { return &m_highlights; }
    bool nothingNeedsYou() const { return m_now.nothing; }
    bool recording() const { return m_now.recording; }
    QString refreshLabel() const { return m_now.refreshLabel; }

    /// Shows this tab from now on whatever the Hub has selected, even one that isn't visible: for pictures.
    void showAlways(Tab tab);
    /// Opens a tab by its raw value.
    Q_INVOKABLE void open(const QString &tab);
    /// Opens the tab at a place among the visible ones; does nothing if there is none.
    void openAt(int place);
    /// Reads everything again, now.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void changed();

private:
    struct Shown {
        int selected = 0;
        bool recording = false;
        bool nothing = true;
        QString refreshLabel;
        bool operator==(const Shown &) const = default;
    };
    void update();
    void refreshed();
    void show(const Shown &now);
    QString labelOfRefresh() const;

    Needs m_needs;
    std::optional<Tab> m_always;
    RowModel m_tabs;
    RowModel m_highlights;
    Shown m_now;
};

} // namespace velto
