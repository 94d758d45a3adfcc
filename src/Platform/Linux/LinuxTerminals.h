#pragma once

#include "Platform/Linux/TerminalCommands.h"
#include "Platform/Places.h"
#include "Platform/Terminals.h"

namespace velto {

/// The terminals on the search path. The desktop's own one is com.apple.Terminal; Ghostty and Warp go by their own identifiers.
class LinuxTerminals final : public Terminals {
public:
    explicit LinuxTerminals(Places places);

    bool installed(const QString &identifier) const override;
    void launch(const QString &identifier, const QString &commandLine) override;

private:
    std::optional<TerminalProgram> program(const QString &identifier) const;
    QString writeScript(const QString &shell, const QString &commandLine) const;

    Places m_places;
};

} // namespace velto
