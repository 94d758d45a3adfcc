#include "RunTests.h"

#include "Client.h"
#include "Hooks/HookListener.h"
#include "Hooks/HookRequest.h"
#include "Hooks/Hooks.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Posix/PosixLoopbackServer.h"

#include <QSignalSpy>
#include <fcntl.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const auto kNoContent = hookReply("204 No Content");
const QByteArray kStop = R"({"hook_event_name":"Stop","cwd":"/home/me"})";
const QByteArray kAsk = R"({"hook_event_name":"PermissionRequest","tool_name":"Bash"})";

/// A listener with everything that it needs, and what it reported.
class Fixture {
public:
    explicit Fixture(const PosixLoopbackServer::Limits &limits = {}, bool takesQuestions = true)
        : listener(std::make_unique<HookListener>(m_defaults, std::make_unique<PosixLoopbackServer>(limits), clock, 0))
    {
        QObject::connect(listener.get(), &HookListener::told, [this](const HookEvent &event) { events.append(event); });
        if (takesQuestions) {
            QObject::connect(listener.get(), &HookListener::asked,
                             [this](const HookEvent &event, HookListener::QuestionId id, const HookListener::Reply &reply) {
                                 questions.append(event);
                                 ids.append(id);
                                 replies.push_back(reply);
                             });
            QObject::connect(listener.get(), &HookListener::withdrawn,
                             [this](HookListener::QuestionId id) { withdrawn.append(id); });
        }
        listener->start();
    }

    QByteArray request(const QByteArray &path, const QByteArray &body) const
    {
        return "POST " + path + " HTTP/1.1\r\nX-Velto-Token: " + hookToken(m_defaults).toLatin1()
            + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    }
    Client client(const QByteArray &bytes = {}) const { return Client(listener->port(), bytes); }
    Client ask() const { return client(request("/permission", kAsk)); }
    bool untilAsked(int count) const
    {
        return QTest::qWaitFor([=, this] { return questions.size() == count; },
                               std::chrono::milliseconds(Client::kLimit).count());
    }

    FakeClock clock;
    QList<HookEvent> events;
    QList<HookEvent> questions;
    QList<HookListener::QuestionId> ids;
    QList<HookListener::QuestionId> withdrawn;
    std::vector<HookListener::Reply> replies;

private:
    mutable FakeDefaults m_defaults;

public:
    std::unique_ptr<HookListener> listener;
};

} // namespace

/// The hook listener over a real socket, and what bounds those who connect to it.
class ListenerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void hearsAnEvent()
    {
        Fixture fixture;
        QVERIFY(fixture.listener->running());
        QCOMPARE(fixture.client(fixture.request("/event", kStop)).reply(), kNoContent);
        QTRY_COMPARE(fixture.events.size(), 1);
        QCOMPARE(fixture.events[0].event, u"Stop"_s);
        QCOMPARE(fixture.events[0].cwd, std::optional(u"/home/me"_s));
        QCOMPARE(fixture.events[0].at, fixture.clock.wallTime());

        auto pieces = fixture.client();
        for (const char byte : fixture.request("/event", kStop))
            QVERIFY(pieces.send(QByteArray(1, byte)));
        QCOMPARE(pieces.reply(), kNoContent);
        QTRY_COMPARE(fixture.events.size(), 2);
        // A body shorter than announced, from a sender that then stops.
        auto cut = fixture.client(fixture.request("/event", kStop + "    ").chopped(4));
        cut.finishSending();
        QCOMPARE(cut.reply(), kNoContent);
        QTRY_COMPARE(fixture.events.size(), 3);

        FakeDefaults defaults;
        HookListener second(defaults, std::make_unique<PosixLoopbackServer>(), fixture.clock, fixture.listener->port());
        const QSignalSpy changes(&second, &HookListener::runningChanged);
        second.start(); // the port is taken
        QVERIFY(!second.running() && changes.isEmpty());
    }

    void keepsQuietAboutWhatItCannotUse()
    {
        Fixture fixture;
        for (const QByteArray path : {"/event", "/permission"}) {
            for (const QByteArray body : {"[]", "{}", "", "{\"hook_event_name\":7}"})
                QCOMPARE(fixture.client(fixture.request(path, body)).reply(), kNoContent);
        }
        auto header = fixture.client("POST /event HTTP/1.1\r\n");
        header.finishSending();
        QCOMPARE(header.reply(), "");
        // The header is enough, and a peer that goes on sending still gets the answer.
        auto guesses = fixture.client("POST /event HTTP/1.1\r\nX-Velto-Token: guess\r\nContent-Length: 2000000\r\n\r\n");
        pollfd answered{guesses.descriptor(), POLLIN, 0};
        QCOMPARE(poll(&answered, 1, 20'000), 1);
        QVERIFY(guesses.send(QByteArray(1024 * 1024, 'x')));
        QCOMPARE(guesses.reply(), hookReply("403 Forbidden"));
        QCOMPARE(fixture.client(fixture.request("/event", QByteArray(256'000, ' '))).reply(), hookReply("413 Payload Too Large"));
        // In order: had one of the above been accepted, it would precede this one.
        QCOMPARE(fixture.client(fixture.request("/event", kStop)).reply(), kNoContent);
        QTRY_COMPARE(fixture.events.size(), 1);
        QVERIFY(fixture.questions.isEmpty());
    }

    void answersAQuestion()
    {
        for (const auto decision : {std::optional(true), std::optional(false), std::optional<bool>()}) {
            Fixture fixture;
            auto asker = fixture.ask();
            QVERIFY(fixture.untilAsked(1));
            QCOMPARE(fixture.questions[0].tool, std::optional(u"Bash"_s));
            QVERIFY(fixture.replies[0](decision));
            QVERIFY(!fixture.replies[0](!decision.value_or(false))); // only the first answer counts
            asker.send("more that nobody reads");
            fixture.listener.reset(); // what was answered is sent all the same
            QCOMPARE(asker.reply(), permissionReply(decision));
        }
    }

    void leavesAQuestionToTheTerminalIfNobodyTakesItOrItDies()
    {
        const Fixture nobody({}, false);
        QCOMPARE(nobody.ask().reply(), kNoContent);

        Fixture fixture;
        auto dropped = fixture.ask();
        QVERIFY(fixture.untilAsked(1));
        fixture.replies.clear();
        QCOMPARE(dropped.reply(), kNoContent);

        auto shown = fixture.ask();
        QVERIFY(fixture.untilAsked(2));
        auto onItsWay = fixture.ask();
        fixture.listener.reset();
        QCOMPARE(shown.reply(), kNoContent);
        // The second one may not even have been accepted; it gets no decision either way.
        QVERIFY(!onItsWay.reply().contains("behavior"));
        fixture.replies[0](true);
        QCoreApplication::processEvents();
        QCOMPARE(fixture.questions.size(), 2);
    }

    void mayBeDestroyedByWhatItCalls()
    {
        Fixture fixture;
        int calls = 0;
        connect(fixture.listener.get(), &HookListener::told, this, [&] {
            ++calls;
            fixture.listener.reset();
        });
        // Both are there before the event loop runs again.
        auto event = fixture.client(fixture.request("/event", kStop));
        auto question = fixture.ask();
        QCOMPARE(event.reply(), kNoContent);
        QVERIFY(!question.reply().contains("behavior"));
        QCOMPARE(calls, 1);
    }

    void tellsWhenAnAskerIsGone()
    {
        Fixture fixture;
        auto closes = fixture.ask();
        auto resets = fixture.ask();
        auto stays = fixture.ask();
        QVERIFY(fixture.untilAsked(3));
        closes.leave();
        QTRY_COMPARE(fixture.withdrawn, QList{fixture.ids[0]});
        QVERIFY(!fixture.replies[0](true));
        resets.reset();
        QTRY_COMPARE(fixture.withdrawn.size(), 2);

        // A peer that has only finished sending still wants its answer, and may leave all the same.
        stays.finishSending();
        auto leaves = fixture.client(fixture.request("/permission", kAsk));
        leaves.finishSending();
        QVERIFY(fixture.untilAsked(4));
        QTest::qWait(3 * 200);
        QCOMPARE(fixture.withdrawn.size(), 2);
        leaves.leave();
        QTRY_COMPARE(fixture.withdrawn.size(), 3);
        QCOMPARE(fixture.withdrawn[2], fixture.ids[3]);
        QVERIFY(fixture.replies[2](false));
        QCOMPARE(stays.reply(), permissionReply(false));
        QCoreApplication::processEvents();
        QCOMPARE(fixture.withdrawn.size(), 3);
    }

    void boundsOpenQuestions()
    {
        Fixture fixture;
        std::vector<Client> askers;
        for (int i = 0; i < 128; ++i)
            askers.push_back(fixture.ask());
        QVERIFY(fixture.untilAsked(128));
        QCOMPARE(fixture.ask().reply(), kNoContent);
        fixture.replies[5](true);
        fixture.replies[7](true);
        auto again = fixture.ask();
        QVERIFY(fixture.untilAsked(129));
        fixture.replies[128](false);
        QCOMPARE(again.reply(), permissionReply(false));
    }

    void dropsTheMostSilentWhenOneMoreComes()
    {
        const Fixture fixture({.busy = 4});
        std::vector<Client> silent;
        for (int i = 0; i < 300; ++i)
            silent.push_back(fixture.client());
        QCOMPARE(fixture.client(fixture.request("/event", kStop)).reply(), kNoContent);
        for (int i = 0; i < 295; ++i)
            QCOMPARE(silent[std::size_t(i)].reply(), "");
        QVERIFY(silent.back().send(fixture.request("/event", kStop)));
        QCOMPARE(silent.back().reply(), kNoContent);
    }

    void dropsTheUnfinishedInTheEndButNotTheWaiting()
    {
        Fixture fixture({.patience = std::chrono::milliseconds(50)});
        auto waiting = fixture.ask();
        QVERIFY(fixture.untilAsked(1));
        for (const char *unfinished : {"", "half a line"})
            QCOMPARE(fixture.client(unfinished).reply(), "");
        fixture.replies[0](true);
        QCOMPARE(waiting.reply(), permissionReply(true));
    }

    void boundsWhatAllTogetherSend()
    {
        const Fixture fixture({.buffered = 100'000});
        const auto request = fixture.request("/event", QByteArray(60'000, 'x'));
        std::vector<Client> hoarders;
        for (int i = 0; i < 5; ++i)
            hoarders.push_back(fixture.client(request.chopped(1)));
        // A peer that is dropped may see a reset.
        for (int i = 0; i < 4; ++i)
            QVERIFY(hoarders[std::size_t(i)].reply().size() < 6);
        hoarders.back().send("x");
        QCOMPARE(hoarders.back().reply(), kNoContent);
    }

    void waitsOutALackOfDescriptors()
    {
        const Fixture fixture;
        Client client;
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
        const int next = fcntl(0, F_DUPFD_CLOEXEC, 0);
        close(next);
        const rlimit none{rlim_t(next), before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
        const bool connected = client.connectTo(fixture.listener->port()) && client.send(fixture.request("/event", kStop));
        const auto probe = fcntl(0, F_DUPFD_CLOEXEC, 0);
        setrlimit(RLIMIT_NOFILE, &before);
        QVERIFY(connected);
        QCOMPARE(probe, -1);
        QCOMPARE(client.reply(), kNoContent);
    }
};

static const Registered<ListenerTest> registered;

#include "ListenerTest.moc"
