#include "App/Program.h"

#include "App/CommandLine.h"
#include "Core/HookListener.h"
#include "Core/Hooks.h"
#include "Core/Process.h"
#include "Design/Theme.h"
#include "Platform/Posix/PosixLoopbackServer.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"

#include <QApplication>
#include <QDir>
#include <QQmlEngine>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

Places placesOfThisMachine()
{
    return {
        QDir::homePath(),
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/velto"_L1,
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Velto"_L1,
        QDir::tempPath(),
    };
}

} // namespace

Program::Program(const CommandLine &commandLine)
    : m_welcome(commandLine.welcome)
    , m_places(placesOfThisMachine())
    , m_defaults(m_files, m_clock, m_places.configuration + "/settings.json"_L1)
    , m_tools(toolSearchPath(m_places.home, qEnvironmentVariable("PATH")))
    , m_platform(m_clock, m_files, m_places)
    , m_prefs(m_defaults, m_places, m_clock)
    , m_installer(m_files, m_clock, m_places.home, hookToken(m_defaults))
    , m_terminal(m_defaults, m_platform.terminals, m_places)
    , m_hubClient(m_http, m_background)
    , m_hub({m_clock, m_platform.accessibility, m_platform.applications, m_platform.workspace, m_prefs, m_terminal,
             makeQuillbox(), makeAgents()})
    , m_ui(m_clock, m_prefs)
    , m_strip(m_hub)
    , m_peekLine(m_hub)
    , m_outline(m_hub, m_ui, m_strip)
    , m_contents(m_hub)
    , m_panel(m_clock, m_ui, m_outline)
    , m_keys(m_panel, m_ui, m_contents)
    , m_tabOrder(m_panel)
    , m_delegate({m_clock, m_hub, m_ui, m_outline, m_platform.displays, m_platform.panelWindow, m_panel, m_platform.session})
    , m_windows(m_platform.appearance,
                {m_hub, m_prefs, m_defaults, m_platform.keychain, m_platform.folderPanel, m_platform.loginItem, m_terminal,
                 m_installer, m_tools, m_places, HookListener::kPort, QCoreApplication::applicationVersion()},
                {m_hub, m_prefs, m_background, m_tools, m_platform.loginItem, m_places})
{
    QObject::connect(&m_delegate, &AppDelegate::quitWanted, qApp, &QCoreApplication::quit);
    QObject::connect(&m_delegate, &AppDelegate::settingsWanted, &m_windows, &Windows::showSettings);
    QObject::connect(&m_delegate, &AppDelegate::welcomeWanted, &m_windows, &Windows::showWelcome);
    QObject::connect(&m_windows, &Windows::welcomed, &m_delegate, &AppDelegate::welcomed);
    QObject::connect(&m_windows, &Windows::quitWanted, qApp, &QCoreApplication::quit);
    // Whatever the first frame doesn't need waits for it.
    QObject::connect(
        &m_panel, &QQuickWindow::frameSwapped, &m_delegate, [this] { painted(); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    showPanel();
    if (commandLine.expanded)
        m_delegate.open(false);
    if (commandLine.demoPeek)
        m_delegate.demoPeek();
}

Program::~Program()
{
    m_tools.stop();
}

std::unique_ptr<QuillboxSource> Program::makeQuillbox()
{
    return std::make_unique<QuillboxSource>(QuillboxSource::Needs{m_clock, m_platform.machine, m_hubClient, m_places.home});
}

std::unique_ptr<AgentsSource> Program::makeAgents()
{
    auto listener = std::make_unique<HookListener>(m_defaults, std::make_unique<PosixLoopbackServer>(), m_clock);
    return std::make_unique<AgentsSource>(AgentsSource::Needs{m_clock, m_background, m_tools, m_files, m_platform.applications,
                                                              m_platform.workspace, m_prefs, m_terminal, m_places, m_installer,
                                                              std::move(listener)});
}

void Program::showPanel()
{
    m_panel.engine()->addImportPath(u"qrc:/qt/qml"_s);
    m_panel.setInitialProperties({
        {u"ui"_s, QVariant::fromValue(&m_ui)},
        {u"strip"_s, QVariant::fromValue(&m_strip)},
        {u"peekLine"_s, QVariant::fromValue(&m_peekLine)},
        {u"outline"_s, QVariant::fromValue(&m_outline)},
        {u"contents"_s, QVariant::fromValue(&m_contents)},
        {u"accessibility"_s, QVariant::fromValue(static_cast<Accessibility *>(&m_platform.accessibility))},
    });
    m_panel.setSource(QUrl(u"qrc:/qt/qml/Velto/Shell/VeltoView.qml"_s));
    auto *theme = Theme::of(m_panel.engine());
    const auto follow = [theme, this] { theme->setReducedMotion(m_platform.accessibility.reducedMotion()); };
    QObject::connect(&m_platform.accessibility, &Accessibility::changed, theme, follow);
    follow();
    m_platform.panelWindow.adopt(&m_panel);
    m_delegate.showPanel();
}

void Program::painted()
{
    m_platform.start();
    m_delegate.addStatusItem(m_platform.statusItem);
    m_delegate.addHotKey(m_platform.hotKey);
    m_windows.setHotKeyRegistered(m_delegate.hotKeyRegistered());
    if (!m_prefs.onboarded() || m_welcome)
        m_delegate.showWelcome();
}

} // namespace velto
