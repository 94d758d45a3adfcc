#pragma once

#include "Core/RowModel.h"
#include "Core/VeltoSource.h"
#include "Feeds/Work/TokenSettings.h"
#include "Tabs/Connect/CalendarForm.h"
#include "Tabs/Connect/McpForm.h"
#include "Tabs/Connect/ModuleStatus.h"

#include <QSet>
#include <array>

namespace velto {

class AgentsSource;
class Background;
class Clipboard;
class Clock;
class EverydaySource;
class FolderPanel;
class GoogleCalendar;
class Keychain;
class Prefs;
class SignalsSource;
class TerminalApp;
class TodosSource;
class ToolRunner;
class WorkSource;

/// Which tools Velto looks at, how each of them is doing, and the forms that link accounts. UI thread only.
class ConnectSource : public VeltoSource {
    Q_OBJECT
    Q_MOC_INCLUDE("Tabs/Agents/AgentsSource.h")
    /// The segments of "Mode": value (what chooseMode() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *modes READ modes CONSTANT FINAL)
    /// module, symbol, label, on, text, ok, actionLabel
    Q_PROPERTY(QAbstractItemModel *work READ work CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel *context READ context CONSTANT FINAL)
    Q_PROPERTY(QAbstractItemModel *utilities READ utilities CONSTANT FINAL)

    /// For the preview of its hooks.
    Q_PROPERTY(velto::AgentsSource *agents READ agents CONSTANT FINAL)
    Q_PROPERTY(bool workFormOpen READ workFormOpen NOTIFY changed FINAL)
    Q_PROPERTY(bool calendarFormOpen READ calendarFormOpen NOTIFY changed FINAL)
    Q_PROPERTY(bool mcpFormOpen READ mcpFormOpen NOTIFY changed FINAL)
    Q_PROPERTY(bool usageOpen READ usageOpen NOTIFY changed FINAL)
    /// Today's tokens for each hour, as fractions of the maximum, and the maximum in words.
    Q_PROPERTY(QList<double> usageHours READ usageHours NOTIFY changed FINAL)
    Q_PROPERTY(QString usageMost READ usageMost NOTIFY changed FINAL)
    /// The same for a screen reader: the hours that have any.
    Q_PROPERTY(QString usageSpoken READ usageSpoken NOTIFY changed FINAL)
    Q_PROPERTY(velto::TokenSettings *tokens READ tokens CONSTANT FINAL)
    Q_PROPERTY(velto::CalendarForm *calendar READ calendar CONSTANT FINAL)
    Q_PROPERTY(velto::McpForm *mcp READ mcp CONSTANT FINAL)
    /// name, symbol
    Q_PROPERTY(QAbstractItemModel *salesConnectors READ salesConnectors CONSTANT FINAL)
public:
    /// All of it outlives the source.
    struct Needs {
        TodosSource &todos;
        AgentsSource &agents;
        EverydaySource &everyday;
        WorkSource &work;
        SignalsSource &signalsSource;
        GoogleCalendar &google;
        Prefs &prefs;
        Clock &clock;
        Background &background;
        Keychain &keychain;
        Clipboard &clipboard;
        FolderPanel &folderPanel;
        TerminalApp &terminal;
        const ToolRunner &tools;
    };
    explicit ConnectSource(const Needs &needs, QObject *parent = nullptr);
    ~ConnectSource() override;

    QString title() const override;
    QString symbol() const override;
    int badge() const override { return 0; }
    QUrl makeView() const override;

    QAbstractItemModel *modes() { return &m_modes; }
    QAbstractItemModel *work() { return &m_work; }
    QAbstractItemModel *context() { return &m_context; }
    QAbstractItemModel *utilities() { return &m_utilities; }
    AgentsSource *agents() const;
    bool workFormOpen() const { return m_open.contains(Prefs::Module::Work); }
    bool calendarFormOpen() const { return m_open.contains(Prefs::Module::Calendar); }
    bool mcpFormOpen() const { return m_open.contains(Prefs::Module::Mcp); }
    bool usageOpen() const { return m_open.contains(Prefs::Module::Usage) && m_needs.prefs.isOn(Prefs::Module::Usage); }
    QList<double> usageHours() const;
    QString usageMost() const;
    QString usageSpoken() const;
    TokenSettings *tokens() { return &m_tokens; }
    CalendarForm *calendar() { return &m_calendar; }
    McpForm *mcp() { return &m_mcp; }
    QAbstractItemModel *salesConnectors() { return &m_sales; }

    /// The tab has come into view.
    Q_INVOKABLE void appeared();
    /// Stores a token, and turns on the module that it is for.
    Q_INVOKABLE void saveToken(const QString &name, const QString &token);
    Q_INVOKABLE void chooseMode(const QString &value);
    /// By a module's raw value.
    Q_INVOKABLE void set(const QString &module, bool on);
    /// The button of a module's tile.
    Q_INVOKABLE void act(const QString &module);
    /// Opens a new todo for the user's outreach.
    Q_INVOKABLE void addFollowUp();
    Q_INVOKABLE void openMcpForm();
    /// Puts the service's short name into the form for MCP servers and opens it.
    Q_INVOKABLE void connectSales(const QString &name);

    void worldChanged() override;

Q_SIGNALS:
    /// The user wants to see what connecting Claude Code's hooks adds.
    void hooksWanted();
    /// The user continues in another window, which the panel would cover.
    void otherWindowWanted();
    /// A form was opened; the view brings it into sight.
    void formOpened(const QString &module);

private:
    void toggle(Prefs::Module form);
    void open(Prefs::Module form);
    void update();

    Needs m_needs;
    TokenSettings m_tokens;
    ModuleStatus m_status;
    QSet<Prefs::Module> m_open; ///< whose form is open
    QSet<Prefs::Module> m_openSeen; ///< as last announced
    std::array<qint64, 24> m_hoursSeen{}; ///< as last announced
    CalendarForm m_calendar;
    McpForm m_mcp;
    RowModel m_modes;
    RowModel m_work;
    RowModel m_context;
    RowModel m_utilities;
    RowModel m_sales;
};

} // namespace velto
