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

/// A screen reader and the wish for less motion are noticed, at the start and later.
class StillnessTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void files_data()
    {
        columns<QByteArray, QByteArray, bool, bool>({"kdeglobals", "gtk", "isPlasma", "still"});
        const QByteArray noFactor = "[KDE]\nSingleClick=false\n";
        const QByteArray zero = "[General]\nAnimationDurationFactor=1\n[KDE]\nAnimationDurationFactor=0\n";
        QTest::newRow("nothing") << QByteArray() << QByteArray() << false << false;
        QTest::newRow("Plasma at once") << zero << QByteArray() << true << true;
        QTest::newRow("Plasma slower") << QByteArray("[KDE]\nAnimationDurationFactor=0.5\n") << QByteArray() << true << false;
        QTest::newRow("Plasma as it comes") << noFactor << QByteArray() << true << false;
        QTest::newRow("Plasma's file on another desktop") << zero << QByteArray() << false << false;
        QTest::newRow("GTK") << QByteArray() << QByteArray("[Settings]\ngtk-enable-animations=0\n") << false << true;
        QTest::newRow("GTK in words") << QByteArray() << QByteArray("[Settings]\ngtk-enable-animations = False") << false << true;
        QTest::newRow("GTK on") << QByteArray() << QByteArray("[Settings]\ngtk-enable-animations=1\n") << false << false;
    }
    void files()
    {
        QFETCH(QByteArray, kdeglobals);
        QFETCH(QByteArray, gtk);
        QFETCH(bool, isPlasma);
        QTEST(reducedMotionInFiles(kdeglobals, gtk, isPlasma), "still");
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
        // The reader's bus starts after us.
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
        // The older method packs the value twice.
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
};

static const Registered<StillnessTest> kAdded;
#include "StillnessTest.moc"
