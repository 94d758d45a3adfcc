#pragma once

#include "Platform/Appearance.h"
#include "Platform/Linux/DBusOwners.h"

#include <QDBusVariant>
#include <QFont>

namespace velto {

/// The desktop's settings as xdg-desktop-portal hands them out
/// (https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html): dark or light, and the text
/// size of desktops that Qt has no theme plugin for. Without a portal everything stays as Qt's platform theme has it.
class PortalAppearance final : public Appearance {
    Q_OBJECT
public:
    using Appearance::Appearance;

    void follow() override;
    bool dark() const override { return m_dark; }

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value, const QDBusMessage &signal);

private:
    void ask(const QString &group, const QString &key);
    void take(const QString &group, const QString &key, const QVariant &value);
    void applyFont();

    bool m_following = false;
    DBusOwners m_owners;
    QFont m_font; ///< as Qt chose it
    bool m_dark = false;
    QString m_fontName; ///< "Cantarell 11"
    double m_textScale = 1;
};

} // namespace velto
