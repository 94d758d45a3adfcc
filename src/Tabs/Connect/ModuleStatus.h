#pragma once

#include "Core/Prefs.h"

#include <QCoreApplication>
#include <QSet>
#include <QString>

namespace velto {

class AgentsSource;
class GoogleCalendar;
class SignalsSource;
class TodosSource;
class TokenSettings;
class ToolRunner;
class WorkSource;

/// How a module is doing, and what its tile offers to do about it. UI thread only.
class ModuleStatus {
    Q_DECLARE_TR_FUNCTIONS(velto::ModuleStatus)
public:
    struct Status {
        QString text;
        bool ok = true;
        QString action = {}; ///< the button's label; empty for none
    };

    /// All of it outlives this.
    struct Needs {
        const TodosSource &todos;
        const AgentsSource &agents;
        const WorkSource &work;
        const SignalsSource &signalsSource;
        const GoogleCalendar &google;
        const Prefs &prefs;
        const TokenSettings &tokens;
        const ToolRunner &tools;
    };
    explicit ModuleStatus(const Needs &needs);

    /// `open` holds the modules whose form is open.
    Status of(Prefs::Module module, const QSet<Prefs::Module> &open) const;
    static QString symbol(Prefs::Module module);

private:
    Status agents() const;
    Status calendar(bool open) const;
    Status pullRequests() const;
    Status work(bool open) const;
    Status mcp(bool open) const;
    Status usage(bool open) const;
    Status repos() const;

    Needs m_needs;
};

} // namespace velto
