#include "App/Windows.h"

#include "Platform/Appearance.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace velto {

Windows::Windows(Appearance &appearance, const SettingsStore::Needs &settings, const Welcome::Needs &welcome, QObject *parent)
    : QObject(parent)
    , m_appearance(appearance)
    , m_settingsNeeds(settings)
    , m_welcomeNeeds(welcome)
{
}

Windows::~Windows() = default;

void Windows::showSettings()
{
    if (!m_settingsWindow) {
        m_settings = std::make_unique<SettingsStore>(m_settingsNeeds);
        m_settings->general()->setHotKeyRegistered(m_hotKeyRegistered);
        connect(m_settings->about(), &AboutSettings::quitWanted, this, &Windows::quitWanted);
        m_settingsWindow.reset(make("SettingsWindow.qml", m_settings.get()));
    }
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->requestActivate();
}

void Windows::showWelcome()
{
    if (!m_welcomeWindow) {
        m_welcome = std::make_unique<Welcome>(m_welcomeNeeds);
        connect(m_welcome.get(), &Welcome::done, this, [this] {
            m_welcomeWindow->close();
            Q_EMIT welcomed();
        });
        m_welcomeWindow.reset(make("WelcomeWindow.qml", m_welcome.get()));
        m_welcome->detect();
    }
    m_welcomeWindow->show();
    m_welcomeWindow->raise();
    m_welcomeWindow->requestActivate();
}

void Windows::setHotKeyRegistered(bool registered)
{
    m_hotKeyRegistered = registered;
    if (m_settings)
        m_settings->general()->setHotKeyRegistered(registered);
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
    center(*window);
    return window;
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
