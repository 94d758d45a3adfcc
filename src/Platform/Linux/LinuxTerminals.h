#pragma once

#include "Platform/Linux/TerminalCommands.h"
#include "Platform/Places.h"
#include "Platform/Terminals.h"

namespace velto {

/// The terminals on the search path. The desktop's own is found by its settings and conventions; there is no iTerm.
class LinuxTerminals final : public Terminals {
public:
    explicit LinuxTerminals(Places places);

    bool installed(App app) const override;
    void launch(App app, const QString &commandLine) override;

private:
    static std::optional<TerminalProgram> program(App app);
    QString writeScript(const QString &shell, const QString &commandLine) const;

    Places m_places;
};

} // namespace velto
