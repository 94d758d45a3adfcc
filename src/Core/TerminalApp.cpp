#include "Core/TerminalApp.h"

#include "Core/Texts.h"
#include "Platform/Defaults.h"
#include "Platform/Places.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kKey = "terminalApp"_L1;
/// Whoever installed another terminal than the one that is always there most likely wants it.
constexpr std::array kPreferred{TerminalApp::App::ITerm, TerminalApp::App::Ghostty, TerminalApp::App::Warp};

} // namespace

TerminalApp::TerminalApp(Defaults &defaults, Terminals &terminals, const Places &places)
    : m_defaults(defaults)
    , m_terminals(terminals)
    , m_places(places)
{
}

bool TerminalApp::installed(App app) const
{
    return m_terminals.installed(app);
}

TerminalApp::App TerminalApp::current() const
{
    const QString stored = m_defaults.value(kKey).toString();
    const auto chosen =
        std::ranges::find_if(Terminals::kAll, [&](App app) { return Terminals::identifier(app) == stored && installed(app); });
    if (chosen != Terminals::kAll.end())
        return *chosen;
    const auto found = std::ranges::find_if(kPreferred, [this](App app) { return installed(app); });
    return found == kPreferred.end() ? App::Terminal : *found;
}

void TerminalApp::setCurrent(App app)
{
    m_defaults.set(kKey, Terminals::identifier(app));
}

void TerminalApp::launch(const QString &command) const
{
    m_terminals.launch(current(), command);
}

bool TerminalApp::resumeClaude(const std::optional<QString> &session, const std::optional<QString> &cwd) const
{
    if (!session || !isSessionId(*session))
        return false;
    const bool usable = cwd && QDir::isAbsolutePath(*cwd) && QFileInfo(*cwd).isDir();
    launch("cd %1 && claude --resume %2"_L1.arg(shellQuoted(usable ? *cwd : m_places.home), *session));
    return true;
}

QString shellQuoted(const QString &text)
{
    QString inner;
    for (const QChar c : text) {
        // fish takes a backslash for an escape within quotes too, so it stands outside them, as quotes do.
        if (c == u'\'' || c == u'\\')
            inner += R"('\)"_L1 + c + u'\'';
        else
            inner += c;
    }
    return u'\'' + inner + u'\'';
}

} // namespace velto
