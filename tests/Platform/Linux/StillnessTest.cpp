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
private Q_SLOTS:
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
        PrivateBus bus;
        if (!bus.works())
            QSKIP("no dbus-daemon");
        const QTemporaryDir home;
        PosixFiles files;
        AtspiAccessibility accessibility(files, home.path());
        accessibility.start(bus.connect());
        QVERIFY(!accessibility.screenReaderOn());
        // The reader's bus starts after Velto.
        auto status = std::make_unique<PlayedService>(bus.connect(), u"org.a11y.Bus"_s);
        status->answers = {{u"Get:ScreenReaderEnabled"_s, false}};
        QTRY_VERIFY(status->asked.contains(u"Get:ScreenReaderEnabled"_s));
        const QSignalSpy changes(&accessibility, &Accessibility::changed);
        status->emitPropertyChange(kStatusPath, kStatus, u"IsEnabled"_s, true);
        status->emitPropertyChange(kStatusPath, kStatus, u"ScreenReaderEnabled"_s, true);
        QTRY_VERIFY(accessibility.screenReaderOn());
        QCOMPARE(changes.size(), 1);
        status.reset();
        QTRY_VERIFY(!accessibility.screenReaderOn());
    }
    void portalSaysStill()
    {
        PrivateBus bus;
        if (!bus.works())
            QSKIP("no dbus-daemon");
        PlayedService portal(bus.connect(), u"org.freedesktop.portal.Desktop"_s);
        // The older method wraps the value twice.
        portal.answers = {{u"Read"_s, QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(false))))}};
        const QTemporaryDir home;
        PosixFiles files;
        AtspiAccessibility accessibility(files, home.path());
        accessibility.start(bus.connect());
        QTRY_VERIFY(accessibility.reducedMotion());
        portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                          {u"org.gnome.desktop.interface"_s, u"cursor-size"_s, QVariant::fromValue(QDBusVariant(0))});
        portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                          {u"org.gnome.desktop.interface"_s, u"enable-animations"_s, QVariant::fromValue(QDBusVariant(true))});
        QTRY_VERIFY(!accessibility.reducedMotion());
    }
    void followsWhileRunning()
    {
        PrivateBus bus;
        if (!bus.works())
            QSKIP("no dbus-daemon");
        PlayedService portal(bus.connect(), u"org.freedesktop.portal.Desktop"_s);
        const QTemporaryDir home;
        PosixFiles files;
        AtspiAccessibility accessibility(files, home.path());
        accessibility.start(bus.connect());
        QTRY_VERIFY(portal.asked.size() > 0);
        QSignalSpy changes(&accessibility, &Accessibility::changed);
        const auto row = [&](const QString &group, const QString &key, const QVariant &wanted, const QVariant &usual,
                             bool contrast, double scale) {
            const auto say = [&](const QVariant &value) {
                changes.clear();
                portal.emitSignal(kPortalPath, kSettings, u"SettingChanged"_s,
                                  {group, key, QVariant::fromValue(QDBusVariant(value))});
            };
            say(wanted);
            QTRY_COMPARE(changes.size(), 1);
            QCOMPARE(accessibility.highContrast(), contrast);
            QCOMPARE(accessibility.textScale(), scale);
            say(usual);
            QTRY_COMPARE(changes.size(), 1);
            QVERIFY(!accessibility.highContrast());
            QCOMPARE(accessibility.textScale(), 1.0);
        };
        const auto general = u"org.kde.kdeglobals.General"_s;
        const auto gnome = u"org.gnome.desktop.interface"_s;
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
