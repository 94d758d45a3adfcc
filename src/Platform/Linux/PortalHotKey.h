#pragma once

#include "Platform/HotKey.h"
#include "Platform/Linux/DBusOwners.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace velto {

class Defaults;

/// The global key through the desktop's portal (org.freedesktop.portal.GlobalShortcuts), where the display gives no program one:
/// under Wayland, also to windows that come through XWayland. The desktop asks the user and may let them choose other keys;
/// a user who declined isn't asked again at the next start.
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.GlobalShortcuts.html
class PortalHotKey final : public HotKey {
    Q_OBJECT
public:
    PortalHotKey(Defaults &defaults, const QString &application, std::function<QDBusConnection()> sessionBus,
                 QObject *parent = nullptr);

    /// True: the answer comes later.
    bool registerHotKey(std::function<void()> action) override;
    Support support() const override { return m_support; }
    QString keys() const override { return m_keys; }
    bool canAskAgain() const override { return m_support.state == Support::State::Denied; }
    void askAgain() override;

private Q_SLOTS:
    void sessionAnswered(uint code, const QVariantMap &results);
    void bindAnswered(uint code, const QVariantMap &results);
    void activated(const QDBusObjectPath &session, const QString &shortcut, qulonglong time, const QVariantMap &options);
    void shortcutsChanged(const QDBusMessage &message);
    void sessionClosed();

private:
    void lookForPortal();
    void createSession();
    void bind();
    void portalGone();
    void missing(const QString &desktop);
    void become(const Support &support, const QString &keys = {});
    /// Calls the portal; its answer, a signal from an object named in advance, goes to `slot`.
    void request(const QString &method, const QVariantList &arguments, QVariantMap options, const char *slot);

    Defaults &m_defaults;
    QString m_application;
    std::function<QDBusConnection()> m_sessionBus;
    std::function<void()> m_action;
    QDBusObjectPath m_session;
    DBusOwners m_owners;
    bool m_lost = false; ///< the portal was there, and went
    bool m_listening = false;
    Support m_support;
    QString m_keys;
    int m_requests = 0;
};

} // namespace velto
