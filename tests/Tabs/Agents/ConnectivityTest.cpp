#include "RunTests.h"
#include "Tabs/Agents/Desk.h"

#include "Hooks/Hooks.h"
#include "Platform/LoopbackServer.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace velto;

namespace {

/// A port that other programs may hold, and that calls arrive at.
class Door final : public LoopbackServer {
public:
    bool free = false;

    bool listen(quint16 /*port*/, MakeConnection make) override
    {
        m_make = std::move(make);
        return free;
    }
    quint16 port() const override { return 4747; }
    void reply(ConnectionId /*connection*/, QByteArray /*bytes*/) override { }
    /// An event with an empty body, such as the trial call sends.
    void knock(const QString &token)
    {
        const auto connection = m_make(1);
        QByteArray answer;
        connection->received("POST /event HTTP/1.1\r\nX-Velto-Token: " + token.toLatin1() + "\r\n\r\n", false, answer);
        connection->replied();
        QCoreApplication::processEvents();
    }

private:
    MakeConnection m_make;
};

} // namespace

/// Whether the hooks are connected and their calls arrive, as the user is told.
class ConnectivityTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void whetherCallsArriveIsTriedAndSaid()
    {
        FakeDefaults defaults;
        FakeClock clock;
        auto made = std::make_unique<Door>();
        Door &door = *made;
        Desk desk(std::make_unique<HookListener>(defaults, std::move(made), clock));
        const QString token = hookToken(defaults);
        const auto settle = [&desk] {
            for (int i = 0; i < 3; ++i) {
                desk.background.finishAll();
                desk.clock.advance(1s);
            }
        };
        desk.machine.holder = PortHolder{42, u"python3"_s};
        desk.background.finishAll();
        QCOMPARE(desk.source.hearing().message(),
                 u"Port 4747 is held by python3: Claude Code's calls go there, and not to Velto."_s);
        QVERIFY(!desk.source.heard());
        door.free = true;
        desk.machine.holderEnds();
        QVERIFY(desk.source.heard());

        // A proxy swallows calls that don't bypass it.
        desk.tools.installed.insert(u"curl"_s);
        desk.tools.onRun = [&](const QString &line) {
            if (line.contains(u"--noproxy 127.0.0.1"_s))
                door.knock(token);
        };
        QVERIFY(!desk.source.preview().contains(u"--noproxy"_s));
        desk.source.prepareHooks();
        settle();
        QVERIFY(desk.source.preview().contains(u"curl -s -m 35 --noproxy 127.0.0.1 -X POST"_s));
        desk.source.installHooks();
        settle();
        QVERIFY(desk.source.hooksInstalled() && desk.source.heard());
        QVERIFY(HookInstaller(desk.files, desk.clock, desk.places.home, QString(48, u'a')).goesPastProxy());

        // Sessions work, but no call comes: the trial is made, and fails.
        const auto turn = [&desk] {
            desk.refresh("[" + desk.session("a", "working") + "]");
            desk.clock.advance(1s);
            desk.refresh("[]");
        };
        turn();
        turn();
        door.knock(token); // this call gets through
        desk.tools.onRun = {};
        turn();
        turn();
        turn();
        settle();
        QVERIFY(desk.source.heard());
        turn();
        settle();
        QVERIFY(desk.source.hearing().message().contains(u"didn't arrive"_s));
        door.knock(token);
        QVERIFY(desk.source.heard());
    }

    void theCardStandsUntilTheHooksAreConnected()
    {
        Desk desk;
        QVERIFY(!desk.source.offersHooks()); // nothing is known yet
        desk.refresh("[]");
        QVERIFY(desk.source.offersHooks());
        const QString settings = u"/home/me/.claude/settings.json"_s;
        desk.files.contents.insert(settings, "[]");
        desk.source.installHooks();
        QVERIFY(!desk.source.hookErrorText().isEmpty());
        QVERIFY(desk.source.offersHooks());
        desk.files.contents.remove(settings);
        desk.source.installHooks();
        QVERIFY(desk.source.hookErrorText().isEmpty());
        QVERIFY(desk.source.hooksInstalled());
        QVERIFY(!desk.source.offersHooks());
        // Other programs write that file too.
        const QByteArray connected = desk.files.contents.take(settings);
        desk.refresh("[]");
        QVERIFY(desk.source.offersHooks());
        desk.files.contents.insert(settings, connected);
        desk.refresh("[]");
        QVERIFY(desk.source.hooksInstalled());
        desk.source.removeHooks();
        QVERIFY(desk.source.offersHooks());
        desk.prefs.set(Prefs::Module::Agents, false);
        QVERIFY(!desk.source.offersHooks());
    }
};

static const Registered<ConnectivityTest> registered;
#include "ConnectivityTest.moc"
