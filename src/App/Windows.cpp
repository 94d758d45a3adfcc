#include "App/Windows.h"

#include "Design/Theme.h"
#include "Platform/Accessibility.h"
#include "Platform/Appearance.h"

#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <array>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// The palette of a dark window.
constexpr std::array<std::pair<const char *, QRgb>, 18> kDark{{
    {"window", 0x1f2023},
    {"base", 0x2a2b2f},
    {"alternateBase", 0x1f2023},
    {"button", 0x36383d},
    {"toolTipBase", 0x2f3136},
    {"windowText", 0xf2f2f4},
    {"text", 0xf2f2f4},
    {"buttonText", 0xf2f2f4},
    {"toolTipText", 0xf2f2f4},
    {"brightText", 0xffffff},
    {"highlightedText", 0xffffff},
    {"highlight", 0x3f8ae0},
    {"link", 0x7ab8ff},
    {"placeholderText", 0x9a9ca3},
    {"light", 0x46484e},
    {"midlight", 0x3c3e43},
    {"mid", 0x2a2b2f},
    {"dark", 0x17181a},
}};

} // namespace

Windows::Windows(Appearance &appearance, const Accessibility &accessibility, const SettingsStore::Needs &settings,
                 const Welcome::Needs &welcome, QObject *parent)
    : QObject(parent)
    , m_appearance(appearance)
    , m_accessibility(accessibility)
    , m_settingsNeeds(settings)
    , m_welcomeNeeds(welcome)
{
    qGuiApp->installEventFilter(this);
}

Windows::~Windows() = default;

void Windows::showSettings()
{
    if (!m_settingsWindow) {
        m_settings = std::make_unique<SettingsStore>(m_settingsNeeds);
        connect(m_settings->about(), &AboutSettings::quitWanted, this, &Windows::quitWanted);
        m_settingsWindow.reset(make("SettingsWindow.qml", m_settings.get()));
    }
    show(*m_settingsWindow);
}

void Windows::showWelcome()
{
    if (!m_welcomeWindow) {
        m_welcome = std::make_unique<Welcome>(m_welcomeNeeds);
        connect(m_welcome.get(), &Welcome::done, this, [this] {
            m_welcomeWindow->close();
            Q_EMIT welcomed();
        });
        connect(m_welcome.get(), &Welcome::questionWanted, this, &Windows::questionWanted);
        m_welcomeWindow.reset(make("WelcomeWindow.qml", m_welcome.get()));
        m_welcome->detect();
    }
    show(*m_welcomeWindow);
}

void Windows::show(QQuickWindow &window)
{
    window.show();
    window.raise();
    window.requestActivate();
}

bool Windows::eventFilter(QObject *, QEvent *event)
{
    const auto type = event->type();
    if (type == QEvent::KeyPress)
        m_byKeys = true;
    else if (type == QEvent::MouseButtonPress || type == QEvent::TouchBegin)
        m_byKeys = false;
    return false;
}

// The toolkit marks the focused control only after Tab, and no longer once another window had the keyboard.
void Windows::showWhereTheKeyboardIs(QQuickWindow &window) const
{
    if (!m_byKeys || !window.isActive())
        return;
    QQuickItem *item = window.activeFocusItem();
    if (!item || item == window.contentItem() || !item->activeFocusOnTab())
        item = window.property("first").value<QQuickItem *>();
    if (!item)
        return;
    item->forceActiveFocus(Qt::TabFocusReason);
    item->setProperty("focusReason", Qt::TabFocusReason); // it may have had the focus before
}

QQuickWindow *Windows::make(const char *file, QObject *store)
{
    if (!m_engine) {
        m_appearance.follow();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(u"qrc:/qt/qml"_s);
    }
    QQmlComponent component(m_engine.get(), QUrl("qrc:/qt/qml/Velto/Settings/"_L1 + QLatin1StringView(file)));
    auto *window =
        qobject_cast<QQuickWindow *>(component.createWithInitialProperties({{u"store"_s, QVariant::fromValue(store)}}));
    if (!window)
        qFatal("%s", qPrintable(component.errorString()));
    followAccessibility();
    connect(&m_accessibility, &Accessibility::changed, window, [this] { followAccessibility(); });
    paint(*window);
    connect(&m_appearance, &Appearance::changed, window, [this, window] { paint(*window); });
    connect(window, &QWindow::activeChanged, this, [this, window] { showWhereTheKeyboardIs(*window); });
    window->setIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    center(*window);
    return window;
}

void Windows::followAccessibility()
{
    if (auto *theme = Theme::of(m_engine.get())) {
        theme->setReducedMotion(m_accessibility.reducedMotion());
        theme->setHighContrast(m_accessibility.highContrast());
    }
}

void Windows::paint(QQuickWindow &window) const
{
    for (const auto &[role, colour] : kDark) {
        QQmlProperty property(&window, "palette."_L1 + QLatin1StringView(role));
        if (m_appearance.dark())
            property.write(QColor::fromRgb(colour));
        else
            property.reset();
    }
    // Controls take the application's font when they are made and don't follow its changes.
    QQmlProperty(&window, u"font"_s).write(QGuiApplication::font());
    window.setColor(m_appearance.dark() ? QColor::fromRgb(kDark.front().second) : QGuiApplication::palette().window().color());
}

void Windows::center(QQuickWindow &window) const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    QRect frame({}, window.size().boundedTo(screen->availableSize()));
    frame.moveCenter(screen->availableGeometry().center());
    window.setGeometry(frame);
}

} // namespace velto
