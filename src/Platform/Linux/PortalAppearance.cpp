#include "Platform/Linux/PortalAppearance.h"

#include "Platform/Linux/DBusAsk.h"

#include <QGuiApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const QString kService = u"org.freedesktop.portal.Desktop"_s;
const QString kPath = u"/org/freedesktop/portal/desktop"_s;
const QString kInterface = u"org.freedesktop.portal.Settings"_s;
const QString kAppearance = u"org.freedesktop.appearance"_s;
const QString kInterfaceGroup = u"org.gnome.desktop.interface"_s;
constexpr uint kPrefersDark = 1;
constexpr double kSmallestScale = 0.5;
constexpr double kLargestScale = 3;

} // namespace

void PortalAppearance::follow()
{
    if (std::exchange(m_following, true))
        return;
    m_font = QGuiApplication::font();
    // Without a service name: with one, the call would block until the bus says who owns it.
    QDBusConnection::sessionBus().connect(QString(), kPath, kInterface, u"SettingChanged"_s, this,
                                          SLOT(settingChanged(QString, QString, QDBusVariant, QDBusMessage)));
    m_owners.follow(QDBusConnection::sessionBus(), kService);
    ask(kAppearance, u"color-scheme"_s);
    ask(kInterfaceGroup, u"font-name"_s);
    ask(kInterfaceGroup, u"text-scaling-factor"_s);
}

void PortalAppearance::ask(const QString &group, const QString &key)
{
    const DBusMethod read{kService, kPath, kInterface, u"Read"_s, {group, key}, true};
    velto::ask(QDBusConnection::sessionBus(), read, this, [this, group, key](const QVariant &value) {
        if (value.isValid())
            take(group, key, value);
    });
}

void PortalAppearance::settingChanged(const QString &group, const QString &key, const QDBusVariant &value,
                                      const QDBusMessage &signal)
{
    if (m_owners.sent(signal, kService))
        take(group, key, value.variant());
}

void PortalAppearance::take(const QString &group, const QString &key, const QVariant &value)
{
    if (group == kAppearance && key == "color-scheme"_L1) {
        if (std::exchange(m_dark, value.toUInt() == kPrefersDark) != m_dark)
            Q_EMIT changed();
    } else if (group == kInterfaceGroup && key == "font-name"_L1) {
        m_fontName = value.toString();
        applyFont();
    } else if (group == kInterfaceGroup && key == "text-scaling-factor"_L1) {
        m_textScale = std::clamp(value.toDouble(), kSmallestScale, kLargestScale);
        applyFont();
    }
}

void PortalAppearance::applyFont()
{
    QFont font = m_font;
    bool ok = false;
    if (const double size = m_fontName.section(u' ', -1).toDouble(&ok); ok && size >= 4 && size <= 72) {
        font.setFamily(m_fontName.section(u' ', 0, -2));
        font.setPointSizeF(size);
    }
    font.setPointSizeF(font.pointSizeF() * m_textScale);
    if (font == QGuiApplication::font())
        return;
    QGuiApplication::setFont(font);
    Q_EMIT changed();
}

} // namespace velto
