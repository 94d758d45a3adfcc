#pragma once

#include "Platform/Accessibility.h"
#include "Platform/Linux/DBusOwners.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QVariantMap>
#include <optional>

namespace velto {

class Files;

/// Whether motion is unwanted, from the desktop's own files: known before any desktop service has answered.
/// `kdeglobals` and `gtkSettings` are the files' contents.
bool reducedMotionInFiles(const QByteArray &kdeglobals, const QByteArray &gtkSettings, bool isPlasma);

/// The screen reader through the accessibility bus, reduced motion through the portal's settings or the desktop's files.
/// Announces through the view's own accessible tree. Knows nothing before start(), and waits for no answer.
class AtspiAccessibility final : public Accessibility {
    Q_OBJECT
public:
    /// `configuration` is the folder of the desktop's own files (XDG_CONFIG_HOME).
    AtspiAccessibility(Files &files, QString configuration, QObject *parent = nullptr);

    void start(const QDBusConnection &session);
    bool screenReaderOn() const override { return m_screenReader; }
    bool reducedMotion() const override;
    double textScale() const override;
    bool highContrast() const override;
    void announce(const QString &text) override;

private Q_SLOTS:
    void statusChanged(const QString &interface, const QVariantMap &changed, const QStringList &invalidated,
                       const QDBusMessage &signal);
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value, const QDBusMessage &signal);

private:
    void readFiles();
    void askStatus();
    void askSettings();
    void setScreenReader(bool on);
    void setting(const QString &group, const QString &key, const QVariant &value);

    Files &m_files;
    QString m_configuration;
    QDBusConnection m_session;
    DBusOwners m_owners;
    bool m_screenReader = false;
    bool m_stillInFiles = false;
    std::optional<bool> m_stillInPortal; ///< by enable-animations
    double m_textScale = 1; ///< by text-scaling-factor
    double m_plasmaPoints = 0; ///< of Plasma's general font; 0 as long as it isn't known
    bool m_contrastWanted = false; ///< by the appearance's contrast
    bool m_contrastInGnome = false; ///< by high-contrast
    bool m_contrastInPlasma = false; ///< by the name of the colour scheme
    std::optional<bool> m_stillInPlasma; ///< by AnimationDurationFactor
};

} // namespace velto
