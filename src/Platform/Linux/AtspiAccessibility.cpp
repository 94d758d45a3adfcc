#include "Platform/Linux/AtspiAccessibility.h"

#include "Platform/Files.h"
#include "Platform/Linux/DBusAsk.h"

#include <algorithm>
#include <tuple>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// at-spi2-core, bus/at-spi-bus-launcher.c. Not IsEnabled beside it, which is true as soon as any program asks for the tree.
constexpr auto kStatusService = "org.a11y.Bus"_L1;
constexpr auto kStatusPath = "/org/a11y/bus"_L1;
constexpr auto kStatus = "org.a11y.Status"_L1;
constexpr auto kScreenReader = "ScreenReaderEnabled"_L1;
// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html
constexpr auto kPortalService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPortalPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kSettings = "org.freedesktop.portal.Settings"_L1;
constexpr auto kGnomeGroup = "org.gnome.desktop.interface"_L1;
constexpr auto kGnomeKey = "enable-animations"_L1;
constexpr auto kTextScaleKey = "text-scaling-factor"_L1;
constexpr auto kPlasmaFontGroup = "org.kde.kdeglobals.General"_L1;
constexpr auto kPlasmaFontKey = "font"_L1; // "Noto Sans,10,-1,5,..."
constexpr double kPlasmaUsual = 10; // points
constexpr auto kAppearance = "org.freedesktop.appearance"_L1;
constexpr auto kContrastKey = "contrast"_L1;
constexpr uint kMoreContrast = 1;
constexpr auto kGnomeAccess = "org.gnome.desktop.a11y.interface"_L1;
constexpr auto kGnomeContrastKey = "high-contrast"_L1;
constexpr auto kPlasmaSchemeKey = "ColorScheme"_L1; // in the font's group; "BreezeHighContrast", say
constexpr auto kPlasmaGroup = "org.kde.kdeglobals.KDE"_L1;
constexpr auto kPlasmaKey = "AnimationDurationFactor"_L1;

constexpr qint64 kLargestFile = 1024 * 1024;

/// The value of a key in a group of an INI file as KDE and GTK write them; empty if it is missing.
QByteArray iniValue(const QByteArray &ini, QByteArrayView group, QByteArrayView key)
{
    bool inside = false;
    QByteArray found;
    for (const auto &raw : ini.split('\n')) {
        const auto line = raw.trimmed();
        if (line.startsWith('['))
            inside = line == '[' + group.toByteArray() + ']';
        else if (const auto equals = line.indexOf('='); inside && equals > 0 && line.first(equals).trimmed() == key)
            found = line.sliced(equals + 1).trimmed();
    }
    return found;
}

/// A factor of 0 makes every animation end at once. Nothing if it isn't a number.
std::optional<bool> stillByFactor(const QByteArray &factor)
{
    bool isNumber = false;
    const double value = factor.toDouble(&isNumber);
    return isNumber ? std::optional(value <= 0) : std::nullopt;
}

} // namespace

bool reducedMotionInFiles(const QByteArray &kdeglobals, const QByteArray &gtkSettings, bool isPlasma)
{
    if (isPlasma)
        return stillByFactor(iniValue(kdeglobals, "KDE", "AnimationDurationFactor")).value_or(false);
    const auto animations = iniValue(gtkSettings, "Settings", "gtk-enable-animations").toLower();
    return animations == "0" || animations == "false";
}

AtspiAccessibility::AtspiAccessibility(Files &files, QString configuration, QObject *parent)
    : Accessibility(parent)
    , m_files(files)
    , m_configuration(std::move(configuration))
    , m_session(QString())
{
}

void AtspiAccessibility::start(const QDBusConnection &session)
{
    m_session = session;
    readFiles();
    if (!m_session.isConnected())
        return;
    // Without a service name: with one, the call would block until the bus says who owns it.
    m_session.connect(QString(), kStatusPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this,
                      SLOT(statusChanged(QString, QVariantMap, QStringList, QDBusMessage)));
    m_session.connect(QString(), kPortalPath, kSettings, u"SettingChanged"_s, this,
                      SLOT(settingChanged(QString, QString, QDBusVariant, QDBusMessage)));
    // The screen reader's bus may start long after Velto, and end with the reader.
    connect(&m_owners, &DBusOwners::came, this, [this](const QString &service) {
        if (service == kStatusService)
            askStatus();
    });
    connect(&m_owners, &DBusOwners::gone, this, [this](const QString &service) {
        if (service == kStatusService)
            setScreenReader(false);
    });
    m_owners.follow(m_session, kStatusService);
    m_owners.follow(m_session, kPortalService);
    askSettings();
}

void AtspiAccessibility::readFiles()
{
    const auto content = [this](QLatin1StringView name) {
        const auto file = m_files.read(m_configuration + u'/' + name, kLargestFile);
        const auto *bytes = std::get_if<QByteArray>(&file);
        return bytes ? *bytes : QByteArray();
    };
    const bool isPlasma = qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE");
    const bool still = reducedMotionInFiles(content("kdeglobals"_L1), content("gtk-3.0/settings.ini"_L1), isPlasma);
    const bool before = reducedMotion();
    m_stillInFiles = still;
    if (before != reducedMotion())
        Q_EMIT changed();
}

void AtspiAccessibility::askStatus()
{
    ask(m_session, propertyOf(kStatusService, kStatusPath, kStatus, kScreenReader), this,
        [this](const QVariant &on) { setScreenReader(on.toBool()); });
}

/// Starts the portal if it isn't running: on GNOME there is no other source, and the first program with a file dialog starts it
/// anyway.
void AtspiAccessibility::askSettings()
{
    for (const auto &[group, key] :
         {std::pair(kGnomeGroup, kGnomeKey), std::pair(kGnomeGroup, kTextScaleKey), std::pair(kPlasmaGroup, kPlasmaKey),
          std::pair(kPlasmaFontGroup, kPlasmaFontKey), std::pair(kAppearance, kContrastKey),
          std::pair(kGnomeAccess, kGnomeContrastKey), std::pair(kPlasmaFontGroup, kPlasmaSchemeKey)}) {
        DBusMethod read{kPortalService, kPortalPath, kSettings, u"Read"_s, {QString(group), QString(key)}, true};
        ask(m_session, read, this, [this, group = QString(group), key = QString(key)](const QVariant &value) {
            if (value.isValid())
                setting(group, key, value);
        });
    }
}

bool AtspiAccessibility::reducedMotion() const
{
    if (m_stillInPlasma)
        return *m_stillInPlasma;
    return m_stillInPortal.value_or(false) || m_stillInFiles;
}

double AtspiAccessibility::textScale() const
{
    const double plasma = m_plasmaPoints / kPlasmaUsual;
    return std::clamp(std::max(m_textScale, plasma), 1.0, 2.0);
}

bool AtspiAccessibility::highContrast() const
{
    return m_contrastWanted || m_contrastInGnome || m_contrastInPlasma;
}

/// From this toolkit a window's alert event never reaches the screen reader; an item that becomes visible does. See the view.
void AtspiAccessibility::announce(const QString &text)
{
    Q_EMIT announcementRequested(text);
}

void AtspiAccessibility::statusChanged(const QString &interface, const QVariantMap &changed, const QStringList &,
                                       const QDBusMessage &signal)
{
    if (m_owners.sent(signal, kStatusService) && interface == kStatus && changed.contains(kScreenReader))
        setScreenReader(changed.value(kScreenReader).toBool());
}

void AtspiAccessibility::settingChanged(const QString &group, const QString &key, const QDBusVariant &value,
                                        const QDBusMessage &signal)
{
    if (m_owners.sent(signal, kPortalService))
        setting(group, key, value.variant());
}

void AtspiAccessibility::setScreenReader(bool on)
{
    if (std::exchange(m_screenReader, on) != on)
        Q_EMIT changed();
}

void AtspiAccessibility::setting(const QString &group, const QString &key, const QVariant &value)
{
    const auto known = [this] { return std::tuple(reducedMotion(), textScale(), highContrast()); };
    const auto before = known();
    if (group == kGnomeGroup && key == kGnomeKey)
        m_stillInPortal = !value.toBool();
    else if (group == kPlasmaGroup && key == kPlasmaKey)
        m_stillInPlasma = stillByFactor(value.toString().toUtf8());
    else if (group == kGnomeGroup && key == kTextScaleKey)
        m_textScale = value.toDouble();
    else if (group == kPlasmaFontGroup && key == kPlasmaFontKey)
        m_plasmaPoints = value.toString().section(u',', 1, 1).toDouble();
    else if (group == kAppearance && key == kContrastKey)
        m_contrastWanted = value.toUInt() == kMoreContrast;
    else if (group == kGnomeAccess && key == kGnomeContrastKey)
        m_contrastInGnome = value.toBool();
    else if (group == kPlasmaFontGroup && key == kPlasmaSchemeKey)
        m_contrastInPlasma = value.toString().remove(u' ').contains("HighContrast"_L1, Qt::CaseInsensitive);
    if (before != known())
        Q_EMIT changed();
}

} // namespace velto
