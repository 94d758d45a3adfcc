#include "Platform/Linux/AtspiAccessibility.h"
#include "Platform/Posix/PosixFiles.h"
#include "PrivateBus.h"
#include "RunTests.h"

#include <QSignalSpy>
#include <QTemporaryDir>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

const auto kStatusPath = u"/org/a11y/bus"_s;
const auto kStatus = u"org.a11y.Status"_s;
const auto kPortalPath = u"/org/freedesktop/portal/desktop"_s;
const auto kSettings = u"org.freedesktop.portal.Settings"_s;

} // namespace

/// A screen reader, and the settings for less motion, larger text and more contrast, are noticed at the start and later.
class StillnessTest : public QObject {
    Q_OBJECT
    const QTemporaryDir m_home;
    PosixFiles m_files;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<AtspiAccessibility> m_accessibility;

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->works())
            QSKIP("no dbus-daemon");
        m_accessibility = std::make_unique<AtspiAccessibility>(m_files, m_home.path());
    }
    void cleanup()
    {
        m_accessibility.reset();
        m_bus.reset();
    }

    void files()
    {
        const QByteArray zero = "[General]\nAnimationDurationFactor=1\n[KDE]\nAnimationDurationFactor=0\n";
        QVERIFY(!reducedMotionInFiles({}, {}, false));
        QVERIFY(reducedMotionInFiles(zero, {}, true));
        QVERIFY(!reducedMotionInFiles(zero, {}, false)); // Plasma's file under another desktop
        QVERIFY(!reducedMotionInFiles("[KDE]\nAnimationDurationFactor=0.5\n", {}, true));
        QVERIFY(!reducedMotionInFiles("[KDE]\nSingleClick=false\n", {}, true));
        QVERIFY(reducedMotionInFiles({}, "[Settings]\ngtk-enable-animations=0\n", false));
        QVERIFY(reducedMotionInFiles({}, "[Settings]\ngtk-enable-animations = False", false));
        QVERIFY(!reducedMotionInFiles({}, "[Settings]\ngtk-enable-animations=1\n", false));
    }
    void screenReaderComesAndGoes()
    {
        m_accessibility->start(m_bus->connect());
        QVERIFY(!m_accessibility->screenReaderOn());
        // The reader's bus starts after us.
        auto status = std::make_unique<PlayedService>(m_bus->connect(), u"org.a11y.Bus"_s);
        status->answers = {{u"Get:ScreenReaderEnabled"_s, false}};
        QTRY_VERIFY(status->asked.contains(u"Get:ScreenReaderEnabled"_s));
        const QSignalSpy changes(m_accessibility.get(), &Accessibility::changed);
        status->emitPropertyChange(kStatusPath, kStatus, u"IsEnabled"_s, true);
        status->emitPropertyChange(kStatusPath, kStatus, u"ScreenReaderEnabled"_s, true);
        QTRY_VERIFY(m_accessibility->screenReaderOn());
        QCOMPARE(changes.size(), 1);
        status.reset();
        QTRY_VERIFY(!m_accessibility->screenReaderOn());
    }
    void followsWhileRunning()
    {
        PlayedService portal(m_bus->connect(), u"org.freedesktop.portal.Desktop"_s);
        // The older method packs the value twice.
        portal.answers = {{u"Read"_s, QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(false))))}};
        m_accessibility->start(m_bus->connect());
        QTRY_VERIFY(m_accessibility->reducedMotion());
        const auto gnome = u"org.gnome.desktop.interface"_s;
        portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                          {gnome, u"cursor-size"_s, QVariant::fromValue(QDBusVariant(0))});
        portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                          {gnome, u"enable-animations"_s, QVariant::fromValue(QDBusVariant(true))});
        QTRY_VERIFY(!m_accessibility->reducedMotion());
        QSignalSpy changes(m_accessibility.get(), &Accessibility::changed);
        const auto row = [&](const QString &group, const QString &key, const QVariant &wanted, const QVariant &usual,
                             bool contrast, double scale) {
            const auto say = [&](const QVariant &value) {
                changes.clear();
                portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                                  {group, key, QVariant::fromValue(QDBusVariant(value))});
            };
            say(wanted);
            QTRY_COMPARE(changes.size(), 1);
            QCOMPARE(m_accessibility->highContrast(), contrast);
            QCOMPARE(m_accessibility->textScale(), scale);
            say(usual);
            QTRY_COMPARE(changes.size(), 1);
            QVERIFY(!m_accessibility->highContrast());
            QCOMPARE(m_accessibility->textScale(), 1.0);
        };
        const auto general = u"org.kde.kdeglobals.General"_s;
        row(u"org.freedesktop.appearance"_s, u"contrast"_s, 1U, 0U, true, 1.0);
        row(u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, true, false, true, 1.0);
        row(general, u"ColorScheme"_s, u"Breeze High Contrast"_s, u"BreezeDark"_s, true, 1.0);
        row(gnome, u"text-scaling-factor"_s, 1.5, 1.0, false, 1.5);
        row(gnome, u"text-scaling-factor"_s, 9.0, 0.5, false, 2.0); // clamped
        row(general, u"font"_s, u"Noto Sans,15,-1,5,50"_s, u"Noto Sans,10,-1,5,50"_s, false, 1.5);
    }
};

static const Registered<StillnessTest> kAdded;
#include "StillnessTest.moc"
