#include "Platform/Fake/FakePlatform.h"
#include "Platform/Linux/PortalHotKey.h"
#include "PrivateBus.h"
#include "RunTests.h"

#include <QDBusArgument>

using namespace velto;
using namespace Qt::StringLiterals;

namespace {

const auto kName = u"org.freedesktop.portal.Desktop"_s;
const auto kPath = u"/org/freedesktop/portal/desktop"_s;
const auto kShortcuts = u"org.freedesktop.portal.GlobalShortcuts"_s;
const auto kSession = u"/org/freedesktop/portal/desktop/session/1/velto"_s;

/// The shortcuts that the portal granted, an array of (sa{sv}).
QVariant bound(const QString &keys)
{
    QDBusArgument shortcuts;
    shortcuts.beginArray(QMetaType::fromName("velto::PortalShortcut")); // what the key itself sends
    shortcuts.beginStructure();
    shortcuts << u"open-and-search"_s << QVariantMap{{u"trigger_description"_s, keys}};
    shortcuts.endStructure();
    shortcuts.endArray();
    return QVariant::fromValue(shortcuts);
}

} // namespace

/// The global key as the desktop's portal grants it, refuses it, changes it and takes it back.
class PortalKeyTest : public QObject {
    Q_OBJECT
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<PlayedService> m_portal;
    std::unique_ptr<PortalHotKey> m_key;
    FakeDefaults m_defaults;
    QString m_us; ///< our end of the bus, as the portal's paths have it
    int m_requests = 0;
    int m_presses = 0;

    void play()
    {
        m_portal = std::make_unique<PlayedService>(m_bus->connect(), kName);
        m_portal->answers = {{u"Register"_s, true},
                             {u"Get:version"_s, 1u},
                             {u"CreateSession"_s, QVariant::fromValue(QDBusObjectPath(kPath))},
                             {u"BindShortcuts"_s, QVariant::fromValue(QDBusObjectPath(kPath))}};
    }
    void begin()
    {
        const auto bus = m_bus->connect();
        m_us = bus.baseService().mid(1).replace(u'.', u'_');
        m_requests = 0;
        m_key = std::make_unique<PortalHotKey>(m_defaults, u"velto"_s, [bus] { return bus; });
        QVERIFY(m_key->registerHotKey([this] { ++m_presses; }));
    }
    /// Waits for that call, and sends the response to its request.
    void answer(const QString &method, uint code, const QVariantMap &results)
    {
        QTRY_VERIFY(m_portal->asked.contains(method));
        m_portal->asked.removeAll(method);
        const QString request = kPath + u"/request/%1/velto%2"_s.arg(m_us).arg(++m_requests);
        m_portal->emitSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s, {code, results});
    }
    void openSession() { answer(u"CreateSession"_s, 0, {{u"session_handle"_s, kSession}}); }
    void press()
    {
        m_portal->emitSignal(
            kPath, kShortcuts, u"Activated"_s,
            {QVariant::fromValue(QDBusObjectPath(kSession)), u"open-and-search"_s, qulonglong(1), QVariantMap()});
    }

private Q_SLOTS:
    void init()
    {
        m_bus = std::make_unique<PrivateBus>();
        if (!m_bus->works())
            QSKIP("no dbus-daemon");
        m_defaults.values.clear();
        m_presses = 0;
    }
    void cleanup()
    {
        m_key.reset();
        m_portal.reset();
        m_bus.reset();
    }

    void givenChangedAndTakenBack()
    {
        play();
        begin();
        openSession();
        answer(u"BindShortcuts"_s, 0, {{u"shortcuts"_s, bound(u"Meta+N"_s)}});
        QTRY_VERIFY(m_key->support().works());
        QCOMPARE(m_key->keys(), u"Meta+N"_s);
        press();
        QTRY_COMPARE(m_presses, 1);
        m_portal->emitSignal(kPath, kShortcuts, u"ShortcutsChanged"_s,
                             {QVariant::fromValue(QDBusObjectPath(kSession)), bound(u"Meta+V"_s)});
        QTRY_COMPARE(m_key->keys(), u"Meta+V"_s);
        m_portal->emitSignal(kSession, u"org.freedesktop.portal.Session"_s, u"Closed"_s, {});
        QTRY_COMPARE(m_key->support().state, Support::State::Denied);
        QVERIFY(m_key->canAskAgain());
    }
    void declinedIsAskedAgainOnlyIfTheUserWants()
    {
        play();
        begin();
        openSession();
        answer(u"BindShortcuts"_s, 1, {});
        QTRY_COMPARE(m_key->support().state, Support::State::Denied);
        begin();
        openSession();
        QTRY_COMPARE(m_key->support().state, Support::State::Denied);
        QVERIFY(!m_portal->asked.contains(u"BindShortcuts"_s));
        m_key->askAgain();
        answer(u"BindShortcuts"_s, 0, {{u"shortcuts"_s, bound(u"Meta+N"_s)}});
        QTRY_VERIFY(m_key->support().works());
        QVERIFY(!m_key->canAskAgain());
    }
    /// A portal that crashes takes the key with it; the next one grants it again, and a press is reported once.
    void portalThatComesAgain()
    {
        begin();
        QTRY_VERIFY(m_key->support().reason.contains(u"velto --search"_s)); // there is no portal yet
        play();
        begin();
        openSession();
        answer(u"BindShortcuts"_s, 0, {{u"shortcuts"_s, bound(u"Meta+N"_s)}});
        QTRY_VERIFY(m_key->support().works());
        m_portal.reset();
        QTRY_COMPARE(m_key->support().state, Support::State::Missing);
        play();
        openSession();
        answer(u"BindShortcuts"_s, 0, {{u"shortcuts"_s, bound(u"Meta+N"_s)}});
        QTRY_VERIFY(m_key->support().works());
        press();
        QTRY_COMPARE(m_presses, 1);
        QTest::qWait(20);
        QCOMPARE(m_presses, 1);
    }
};

static const Registered<PortalKeyTest> kAdded;
#include "PortalKeyTest.moc"
