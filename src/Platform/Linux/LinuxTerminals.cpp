#include "Platform/Linux/LinuxTerminals.h"

#include "Platform/Linux/DetachedProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUuid>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString userShell()
{
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found && found->pw_shell) {
        auto shell = QFile::decodeName(found->pw_shell);
        if (QFileInfo(shell).isExecutable())
            return shell;
    }
    return u"/bin/sh"_s;
}

QString findExecutable(const QString &name)
{
    return QStandardPaths::findExecutable(name);
}

} // namespace

LinuxTerminals::LinuxTerminals(Places places)
    : m_places(std::move(places))
{
}

std::optional<TerminalProgram> LinuxTerminals::program(App app)
{
    switch (app) {
    case App::Terminal:
        return defaultTerminal(&findExecutable, qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
                               qEnvironmentVariableIsSet("WAYLAND_DISPLAY"));
    case App::Ghostty:
        return namedTerminal(&findExecutable, u"ghostty"_s);
    case App::Warp:
        return namedTerminal(&findExecutable, u"warp-terminal"_s);
    case App::ITerm:
        break;
    }
    return std::nullopt;
}

bool LinuxTerminals::installed(App app) const
{
    return program(app).has_value();
}

void LinuxTerminals::launch(App app, const QString &commandLine)
{
    const auto terminal = program(app);
    if (!terminal)
        return;
    const auto shell = userShell();
    QString script;
    if (needsScript(terminal->style)) {
        script = writeScript(shell, commandLine);
        if (script.isEmpty())
            return;
    }
    startDetached(terminal->path, terminalArguments(terminal->style, shellCommand(shell, commandLine), script), m_places.home);
}

/// The name is unused and the mode private from the start, so nobody else can read it or have put it there. It is never
/// removed: nothing tells when the terminal has read it.
QString LinuxTerminals::writeScript(const QString &shell, const QString &commandLine) const
{
    auto path = u"%1/velto-resume-%2.command"_s.arg(m_places.temporary, QUuid::createUuid().toString(QUuid::WithoutBraces));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                   QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner))
        return {};
    const auto script = shellScript(shell, commandLine);
    const bool written = file.write(script) == script.size() && file.flush();
    file.close();
    if (written)
        return path;
    file.remove();
    return {};
}

} // namespace velto
