#pragma once

#include "Core/Prefs.h"

#include <QCoreApplication>
#include <QSet>
#include <QString>

namespace velto {

class GoogleCalendar;
class Hub;
class TokenSettings;
class ToolRunner;

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
    ModuleStatus(Hub &hub, const Prefs &prefs, const TokenSettings &tokens, const ToolRunner &tools,
                 const GoogleCalendar &google);

    /// `open` holds the modules whose form is open.
    Status of(Prefs::Module module, const QSet<Prefs::Module> &open) const;
    static QString symbol(Prefs::Module module);

private:
    Status agents() const;
    Status calendar(bool open) const;
    Status pullRequests() const;
    Status work(bool open) const;
    Status mcp(bool open) const;
    Status repos() const;

    Hub &m_hub;
    const Prefs &m_prefs;
    const TokenSettings &m_tokens;
    const ToolRunner &m_tools;
    const GoogleCalendar &m_google;
};

} // namespace velto
