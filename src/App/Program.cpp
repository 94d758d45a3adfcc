#include "App/Program.h"

#include "Design/ItemAccessible.h"
#include "Design/Symbols.h"
#include "Design/Theme.h"
#include "Hooks/HookListener.h"
#include "Platform/Activation.h"
#include "Platform/Clock.h"
#include "Platform/Posix/PosixLoopbackServer.h"
#include "Platform/Posix/ProgramEnd.h"
#include "Platform/Session.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QSignalBlocker>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kLongestFirstFrame{1};
constexpr std::chrono::milliseconds kFrameToScreen{30};
constexpr std::chrono::seconds kLastWrites{1};

/// What the stores ask for during construction waits for the first frame.
Desktop held(ThisMachine &machine)
{
    machine.background.hold();
    return machine.desktop();
}

} // namespace

Program::Program(CommandLine commandLine, Activation &activation)
    : m_activation(activation)
    , m_commandLine(std::move(commandLine))
    , m_stores(held(m_machine), makeListener())
    , m_ui(m_machine.clock, m_stores.prefs)
    , m_strip({m_stores.hub, m_machine.clock, m_stores.prefs, m_stores.everyday, m_stores.agents, m_stores.todos})
    , m_peekLine(m_stores.hub, m_stores.agents)
    , m_outline(m_stores.hub, m_ui, m_strip)
    , m_contents({m_stores.hub, m_stores.prefs, m_stores.everyday, m_stores.agents, m_stores.todos, m_stores.quillbox})
    , m_panel(m_machine.clock, m_ui, m_outline)
    , m_keys(m_panel, m_ui, m_contents, m_stores.hub)
    , m_tabOrder(m_panel)
    , m_delegate({m_machine.clock, m_stores.hub, m_stores.prefs, m_ui, m_outline, m_machine.platform.displays,
                  m_machine.platform.panelWindow, m_machine.platform.session})
    , m_standIn({m_stores.hub, m_stores.agents, m_machine.background, m_machine.tools, m_machine.defaults, m_machine.places})
    , m_windows(m_machine.platform.appearance, m_machine.platform.accessibility,
                {m_stores.hub, m_stores.agents, m_stores.quillbox, m_stores.prefs, m_machine.background, m_machine.clock,
                 m_machine.defaults, m_machine.writer, m_machine.platform.keychain, m_machine.platform.folderPanel,
                 m_machine.platform.loginItem, m_stores.terminal, m_machine.platform.hotKey, m_stores.installer, m_machine.tools,
                 m_machine.places, HookListener::kPort, QCoreApplication::applicationVersion()},
                {m_stores.agents, m_stores.prefs, m_machine.background, m_machine.tools, m_machine.platform.loginItem,
                 m_machine.platform.hotKey, m_machine.places})
    , m_endSignals(&QCoreApplication::quit)
{
    QObject::connect(&m_delegate, &AppDelegate::quitWanted, qApp, &QCoreApplication::quit);
    QObject::connect(&m_delegate, &AppDelegate::settingsWanted, &m_windows, &Windows::showSettings);
    QObject::connect(&m_delegate, &AppDelegate::welcomeWanted, &m_windows, &Windows::showWelcome);
    QObject::connect(&m_windows, &Windows::welcomed, &m_delegate, &AppDelegate::welcomed);
    QObject::connect(&m_windows, &Windows::quitWanted, qApp, &QCoreApplication::quit);
    // The user may have made room on the disk.
    QObject::connect(&m_ui, &UI::expandedChanged, &m_machine.writer, &FileWriter::tryAgain);
    QObject::connect(&m_machine.platform.session, &Session::woke, &m_machine.writer, &FileWriter::tryAgain);
    // Whatever the first frame doesn't need waits until it is on the screen: the display's server and the compositor need the
    // processors for that.
    QObject::connect(
        &m_panel, &QQuickWindow::frameSwapped, &m_delegate,
        [this] { m_onShow = m_machine.clock.after(kFrameToScreen, [this] { painted(); }); },
        Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
    followStandIn();
    m_panel.engine()->addImportPath(u"qrc:/qt/qml"_s);
    if (m_commandLine.testBackdrop)
        showBackdrop(*m_commandLine.testBackdrop);
    beforeExit([this] {
        m_machine.tools.stop();
        saveTheRest();
    });
    showPanel();
    // Nothing is painted while the screen is locked.
    m_paintedAnyway = m_machine.clock.after(kLongestFirstFrame, [this] { m_machine.background.release(); });
    QObject::connect(&m_activation, &Activation::wanted, &m_delegate, &AppDelegate::act);
}

Program::~Program()
{
    beforeExit({});
    m_machine.tools.stop();
    saveTheRest();
}

void Program::saveTheRest()
{
    const QSignalBlocker quiet(m_machine.writer); // the views may have lost their display
    for (const QString &lost : m_machine.writer.finish(kLastWrites))
        qWarning("%s", qPrintable(lost));
}

// Removes what a killed instance left beside the files that Velto writes.
void Program::sweep()
{
    const Places &places = m_machine.places;
    m_machine.writing.start(
        [&files = m_machine.files,
         paths =
             QStringList{places.configuration + "/settings.json"_L1, places.data + "/todos.json"_L1,
                         places.data + "/draft.json"_L1, places.data + "/comments.json"_L1,
                         places.home + "/.claude/settings.json"_L1, places.configuration + "/../autostart/velto.desktop"_L1}] {
            for (const QString &path : paths)
                files.sweep(path);
        },
        [] {});
}

void Program::followStandIn()
{
    m_delegate.addAction(u"try"_s, [this] { m_standIn.ask(); });
    QObject::connect(&m_windows, &Windows::questionWanted, &m_standIn, &StandIn::ask);
    // Whoever started this in a terminal sees what the hook would hand to Claude Code.
    QObject::connect(&m_standIn, &StandIn::told, &m_delegate, [](const QByteArray &answer) {
        const QByteArray line = answer.isEmpty() ? QByteArrayLiteral("nothing") : answer;
        std::fprintf(stdout, "The session was told: %s\n", line.constData());
        std::fflush(stdout);
    });
}

std::unique_ptr<HookListener> Program::makeListener()
{
    return std::make_unique<HookListener>(m_machine.defaults, std::make_unique<PosixLoopbackServer>(), m_machine.clock);
}

void Program::showBackdrop(const QString &kind)
{
    const std::optional<Display> display = chooseDisplay(m_machine.platform.displays.all());
    if (!display)
        return;
    m_backdrop = std::make_unique<QQuickView>(m_panel.engine(), nullptr);
    m_backdrop->setInitialProperties({{u"kind"_s, kind}});
    m_backdrop->setSource(QUrl(u"qrc:/qt/qml/Velto/Preview/Backdrop.qml"_s));
    const QSizeF size = m_backdrop->size();
    const QRectF frame(QPointF(display->frame.center().x() - size.width() / 2, display->frame.top()), size);
    m_machine.platform.panelWindow.showBehind(m_backdrop.get(), frame.toRect());
}

void Program::showPanel()
{
    m_panel.setInitialProperties({
        {u"ui"_s, QVariant::fromValue(&m_ui)},
        {u"strip"_s, QVariant::fromValue(&m_strip)},
        {u"peekLine"_s, QVariant::fromValue(&m_peekLine)},
        {u"outline"_s, QVariant::fromValue(&m_outline)},
        {u"contents"_s, QVariant::fromValue(&m_contents)},
        {u"accessibility"_s, QVariant::fromValue(static_cast<Accessibility *>(&m_machine.platform.accessibility))},
    });
    tellWhatIsGreyed();
    m_panel.setSource(QUrl(u"qrc:/qt/qml/Velto/Shell/VeltoView.qml"_s));
    auto *theme = Theme::of(m_panel.engine());
    const auto follow = [theme, this] {
        theme->setReducedMotion(m_machine.platform.accessibility.reducedMotion());
        theme->setTextScale(fittingTextScale(m_ui.room(), m_machine.platform.accessibility.textScale()));
        m_ui.setTextScale(theme->textScale());
        theme->setHighContrast(m_machine.platform.accessibility.highContrast());
    };
    QObject::connect(&m_machine.platform.accessibility, &Accessibility::changed, theme, follow);
    QObject::connect(&m_ui, &UI::roomChanged, theme, follow);
    follow();
    m_machine.platform.panelWindow.adopt(&m_panel);
    m_panel.desktop = &m_machine.platform.panelWindow;
    m_delegate.showPanel();
}

void Program::painted()
{
    m_machine.background.release();
    // Before the first text: a window with texts lays all of them out anew when fonts come.
    symbolFamily();
    sweep();
    m_machine.platform.start();
    m_delegate.addStatusItem(m_machine.platform.statusItem);
    m_delegate.addHotKey(m_machine.platform.hotKey);
    if (!m_stores.prefs.onboarded())
        m_delegate.showWelcome();
    for (const auto &action : m_commandLine.actions)
        m_delegate.act(action);
    // Whoever starts Velto by the bus wants the panel open too; the first time, the welcome opens instead.
    m_activation.listen(m_commandLine.activated && !m_stores.prefs.onboarded());
}

} // namespace velto
