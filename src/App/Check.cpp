#include "App/Check.h"

#include "App/ThisMachine.h"
#include "Hooks/HookInstaller.h"
#include "Hooks/HookListener.h"
#include "Platform/Linux/DesktopCheck.h"
#include "Platform/Linux/PortHolders.h"

#include <QCoreApplication>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kNameWidth = 20;
constexpr int kStateWidth = 8;
constexpr auto kToolPatience = 5s;

QString text(const char *words)
{
    return QCoreApplication::translate("Check", words);
}

QString word(Support::State state)
{
    switch (state) {
    case Support::State::Works:
        return text("works");
    case Support::State::Denied:
        return text("denied");
    case Support::State::Missing:
        return text("missing");
    }
    Q_UNREACHABLE();
}

QString lineOf(const Checked &checked)
{
    QStringList rest;
    for (const auto &part : {checked.detail.trimmed(), checked.support.reason})
        if (!part.isEmpty())
            rest.append(part);
    const QString line = checked.what.leftJustified(kNameWidth) + u' ' + word(checked.support.state).leftJustified(kStateWidth)
        + u' ' + rest.join(u"; "_s);
    return line.trimmed() + u'\n';
}

/// Checks a tool; its version is the first line of what it says about itself.
Checked tool(ThisMachine &machine, const QString &name, const QString &what, const QString &without)
{
    if (!machine.tools.toolInstalled(name))
        return {what, {Support::State::Missing, without}, {}};
    const auto result = machine.tools.run({name, u"--version"_s}, {}, kToolPatience);
    if (!result.ok)
        return {what, {Support::State::Denied, text("it is there, and doesn't tell its version")}, {}};
    return {what, {}, QString::fromUtf8(result.out).section(u'\n', 0, 0).trimmed()};
}

Checked hooks(ThisMachine &machine)
{
    const HookInstaller installer(machine.files, machine.clock, machine.places.home,
                                  machine.defaults.value(QStringLiteral("hookToken")).toString());
    if (!installer.present())
        return {text("its hooks"), {Support::State::Missing, text("connect Claude Code in the panel's Agents tab")}, {}};
    if (installer.needsUpgrade())
        return {
            text("its hooks"), {Support::State::Denied, text("they are of an older Velto; connect again in the Agents tab")}, {}};
    return {text("its hooks"), {}, {}};
}

Checked port()
{
    constexpr int kPort = HookListener::kPort;
    const QString what = text("port %1").arg(kPort);
    const auto holder = portHolder(kPort);
    if (!holder && !portTaken(kPort))
        return {what, {Support::State::Missing, text("nobody listens; Velto does while it runs")}, {}};
    if (!holder)
        return {what,
                {Support::State::Denied,
                 text("a program of another user of this machine has it, so Claude Code's calls don't reach you until it ends")},
                {}};
    const QString name = "%1 (%2)"_L1.arg(holder->name).arg(holder->pid);
    if (holder->name.startsWith("velto"_L1))
        return {what, {}, name};
    return {what, {Support::State::Denied, text("another program has it: end that one, and start Velto again")}, name};
}

} // namespace

QString checkReport(const std::optional<QString> &noDisplay)
{
    ThisMachine machine;
    machine.platform.start();
    QString report = "velto %1\n"_L1.arg(QCoreApplication::applicationVersion());
    const auto display =
        noDisplay ? QList<Checked>{{text("display"), {Support::State::Missing, *noDisplay}, {}}} : checkDisplay(machine.platform);
    for (const auto &checked : display + checkSession(machine.platform.server))
        report += lineOf(checked);
    report += lineOf(port());
    report += lineOf(tool(machine, u"claude"_s, text("Claude Code"), text("install it, or put it on the PATH of your session")));
    report += lineOf(hooks(machine));
    report += lineOf(tool(machine, u"gh"_s, text("GitHub CLI"), text("install gh for reviews and builds")));
    report += lineOf(tool(machine, u"git"_s, text("git"), text("install git for repositories")));
    const auto players = machine.platform.players.running().size();
    report += lineOf({text("media players"), {}, text("running: %1").arg(players)});
    machine.tools.stop();
    return report;
}

} // namespace velto
