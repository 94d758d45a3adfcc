#include "App/Snapshot.h"

#include "App/AppDelegate.h"
#include "App/CommandLine.h"
#include "App/ThisMachine.h"
#include "Core/UI.h"
#include "Feeds/Signals/SignalsSource.h"
#include "Hooks/HookListener.h"
#include "Hub/Stores.h"
#include "Preview/Renderer.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr QSize kSitePreviewSize{780, 520};
/// How long a picture waits for its subject: the todos, the sessions and the other tools.
constexpr auto kFillingAtMost = 12s;
/// How long it waits for what else the brief may mention.
constexpr auto kSignalsAtMost = 2s;

/// A copy of the user's settings; changes made while pictures are taken are lost with it.
class SettingsCopy final : public Defaults {
public:
    explicit SettingsCopy(const Defaults &original)
        : m_original(original)
    {
    }

    QVariant value(const QString &key) const override { return m_changed.value(key, m_original.value(key)); }
    void set(const QString &key, const QVariant &value) override { m_changed.insert(key, value); }
    void clear(std::function<void(const QString &)>) override { }

private:
    const Defaults &m_original;
    QHash<QString, QVariant> m_changed;
};

/// No picture is worth unlocking a keyring, so services that need a secret aren't shown.
class NoSecrets final : public Keychain {
public:
    std::optional<QString> get(const QString &) const override { return std::nullopt; }
    bool put(const QString &, const std::optional<QString> &) override { return false; }
};

/// What a picture shows, by the name of its file.
struct Scene {
    const char *name;
    PanelSize size = PanelSize::Expanded;
    Tab tab = Tab::Home;
    void (*prepare)(TodosSource &) = nullptr;
};

void openFirst(TodosSource &todos)
{
    if (const QList<Todo> list = todos.shown()->flat(); !list.isEmpty())
        todos.shown()->press(QString::number(list.first().id));
}

void closeAndDraft(TodosSource &todos)
{
    todos.shown()->setOpenID(std::nullopt);
    todos.newDraft();
}

void forgetDraft(TodosSource &todos)
{
    todos.setDraft(std::nullopt);
}

constexpr Scene kScenes[] = {
    {"collapsed", PanelSize::Collapsed},
    {"peek", PanelSize::Peeking},
    {"home"},
    {"todos", PanelSize::Expanded, Tab::Todos},
    {"todo-open", PanelSize::Expanded, Tab::Todos, &openFirst},
    {"add", PanelSize::Expanded, Tab::Todos, &closeAndDraft},
    {"agents", PanelSize::Expanded, Tab::Agents, &forgetDraft},
    {"quillbox", PanelSize::Expanded, Tab::Quillbox},
};

/// Waits until `done` holds, but no longer than `atMost`. The event loop runs meanwhile.
void await(std::chrono::milliseconds atMost, const std::function<bool()> &done)
{
    QEventLoop loop;
    const QDeadlineTimer deadline(atMost);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (done() || deadline.hasExpired())
            loop.quit();
    });
    look.start(20ms);
    loop.exec();
}

class Snapshot {
public:
    ~Snapshot() { m_machine.tools.stop(); }

    std::optional<QString> take(const QString &folder);

private:
    void fill();
    std::optional<QString> draw(const Scene &scene, const QString &path);

    ThisMachine m_machine;
    SettingsCopy m_settings{m_machine.defaults};
    NoSecrets m_secrets;
    Stores m_stores{m_machine.desktopWith(m_settings, m_secrets), nullptr};
    Renderer m_renderer;
};

void Snapshot::fill()
{
    const SignalsSource &slow = m_stores.signalsSource;
    m_stores.todos.refresh();
    m_stores.agents.scan();
    m_stores.signalsSource.refresh(true);
    const auto arrived = [](const SourceState &state) { return state.kind() != SourceState::Kind::Loading; };
    const QDeadlineTimer enough(kSignalsAtMost);
    await(kFillingAtMost, [&] {
        return arrived(m_stores.todos.state()) && m_stores.agents.scanned()
            && (enough.hasExpired() || (arrived(slow.usageState()) && arrived(slow.mcpState()) && arrived(slow.reposState())));
    });
}

std::optional<QString> Snapshot::draw(const Scene &scene, const QString &path)
{
    Hub &hub = m_stores.hub;
    hub.dismissPeek();
    if (scene.size == PanelSize::Peeking)
        hub.show(AppDelegate::examplePeek());
    if (scene.prepare)
        scene.prepare(m_stores.todos);
    UI ui(m_machine.clock, m_stores.prefs);
    CollapsedStrip strip({hub, m_machine.clock, m_stores.prefs, m_stores.everyday, m_stores.agents, m_stores.todos});
    PeekLine line(hub, m_stores.agents);
    PanelOutline outline(hub, ui, strip);
    PanelContents contents({hub, m_stores.prefs, m_stores.everyday, m_stores.agents, m_stores.todos, m_stores.quillbox});
    if (scene.size == PanelSize::Expanded)
        contents.showAlways(scene.tab);
    ui.setExpanded(scene.size == PanelSize::Expanded);
    const QVariantMap properties{
        {u"ui"_s, QVariant::fromValue(&ui)},
        {u"strip"_s, QVariant::fromValue(&strip)},
        {u"peekLine"_s, QVariant::fromValue(&line)},
        {u"outline"_s, QVariant::fromValue(&outline)},
        {u"contents"_s, QVariant::fromValue(&contents)},
        {u"accessibility"_s, QVariant::fromValue(static_cast<Accessibility *>(&m_machine.platform.accessibility))},
    };
    return m_renderer.render(QUrl(u"qrc:/qt/qml/Velto/Shell/VeltoView.qml"_s), properties,
                             panelSize(ui.velto(), scene.size).toSize(), path, true);
}

std::optional<QString> Snapshot::take(const QString &folder)
{
    fill();
    for (const Scene &scene : kScenes) {
        if (auto error = draw(scene, folder + u'/' + QLatin1StringView(scene.name) + ".png"_L1))
            return error;
    }
    return std::nullopt;
}

std::optional<QString> takeSitePreview(const QString &path)
{
    return Renderer().render(QUrl(u"qrc:/qt/qml/Velto/Preview/SitePreview.qml"_s), {}, kSitePreviewSize, path, false);
}

} // namespace

bool choosePictures(const CommandLine &commandLine)
{
    if (!commandLine.snapshot && !commandLine.sitePreview)
        return false;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return true;
}

std::optional<QString> takePictures(const CommandLine &commandLine)
{
    const auto absolute = [](const QString &path) { return QFileInfo(path).absoluteFilePath(); };
    if (commandLine.snapshot)
        return Snapshot().take(absolute(*commandLine.snapshot));
    return takeSitePreview(absolute(*commandLine.sitePreview));
}

} // namespace velto
