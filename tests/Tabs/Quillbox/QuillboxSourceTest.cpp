#include "RunTests.h"
#include "World.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

/// When the hub is asked, and which parts of its answers are new.
class QuillboxSourceTest : public QObject {
    Q_OBJECT

    // JSON with ' instead of ".
    static QByteArray snapshot(const QByteArray &heard, const QByteArray &handoffs = {}, const QByteArray &rest = {})
    {
        const QByteArray json =
            "{'todos': [], 'written_today': {}, 'heard': [" + heard + "], 'handoffs': [" + handoffs + "]" + rest + "}";
        return QByteArray(json).replace('\'', '"');
    }
    static QByteArray heard(int id, const QByteArray &name = "Tolver: x")
    {
        return "{'id': " + QByteArray::number(id) + ", 'name': '" + name + "', 'at': ''}";
    }
    static QByteArray handoff(int id, const QByteArray &device, const QByteArray &at = "",
                              const QByteArray &name = "Handoff · api")
    {
        const QByteArray from = device.isNull() ? QByteArray("null") : "'" + device + "'";
        return "{'id': " + QByteArray::number(id) + ", 'name': '" + name + "', 'device': " + from + ", 'at': '" + at + "'}";
    }

    /// A connection of its own, which records its Peeks.
    struct Desk : World {
        QuillboxSource &source = quillbox;
        QList<Peek> peeks;

        Desk()
        {
            machine.name = u"Sam’s Desk"_s;
            QObject::connect(&source, &VeltoSource::peekWanted, [this](const Peek &peek) { peeks.append(peek); });
        }
        /// Makes the hub answer this at the next tick.
        void say(const HttpReply &reply)
        {
            http.answer = [reply](const HttpRequest &) { return reply; };
            clock.advance(std::chrono::seconds(10));
            source.refresh();
            background.finishAll();
        }
        void say(const QByteArray &json) { say(HttpReply{200, json, {}}); }
        QStringList texts() const
        {
            QStringList result;
            for (const Peek &peek : peeks)
                result.append(peek.text);
            return result;
        }
    };

private Q_SLOTS:
    void withoutAConnectionNothingIsAsked()
    {
        Desk desk;
        desk.refresh();
        QCOMPARE(desk.source.state(),
                 SourceState::unavailable(u"Quillbox isn't connected."_s,
                                          u"It's optional — connect it in Settings to see your todos here."_s));
        QCOMPARE(desk.source.modeLabel(), u"Not connected"_s);
        QVERIFY(!desk.hub.tabs().contains(Tab::Quillbox));

        desk.quillboxMode = QuillboxMode::local(u"/home/me/quillbox"_s);
        desk.source.reconnect();
        QCOMPARE(desk.source.state(), SourceState::ready());
        QCOMPARE(desk.source.modeLabel(), u"On this Mac · ~/quillbox"_s);
        QVERIFY(!desk.hub.tabs().contains(Tab::Quillbox));
        QVERIFY(desk.http.requests.isEmpty());
    }

    void theTabComesAndGoesWithTheHub()
    {
        Desk desk;
        desk.connectHub(snapshot({}));
        QCOMPARE(desk.source.state(), SourceState::ready());
        QCOMPARE(desk.source.modeLabel(), u"Hub · hub.example.net"_s);
        desk.hub.open(Tab::Quillbox);
        QCOMPARE(desk.hub.selected(), Tab::Quillbox);
        desk.quillboxMode = {};
        desk.source.reconnect();
        QVERIFY(!desk.hub.tabs().contains(Tab::Quillbox));
        QVERIFY(desk.hub.selected() != Tab::Quillbox);

        desk.connectHub(snapshot({}));
        desk.prefs.set(Prefs::Module::Todos, false);
        desk.wait(0);
        QVERIFY(!desk.hub.tabs().contains(Tab::Quillbox));
        const qsizetype asked = desk.http.requests.size();
        desk.wait(90'000);
        QCOMPARE(desk.http.requests.size(), asked);
    }

    void isAskedOnceInTenSecondsAlsoAfterAFailure()
    {
        Desk desk;
        desk.connectHub(snapshot({}));
        desk.source.refresh();
        desk.source.refresh();
        QCOMPARE(desk.http.requests.size(), 1);
        desk.wait(9'999);
        desk.source.refresh();
        QCOMPARE(desk.http.requests.size(), 1);
        desk.say(HttpReply{503, {}, {}});
        QCOMPARE(desk.http.requests.size(), 2);
        desk.source.refresh();
        QCOMPARE(desk.http.requests.size(), 2);
        desk.http.answer = [](const HttpRequest &) { return HttpReply{200, snapshot({}), {}}; };
        desk.source.fetchAgain();
        QCOMPARE(desk.http.requests.size(), 3);
        desk.source.fetchAgain(); // a request is under way
        QCOMPARE(desk.http.requests.size(), 3);
        desk.background.finishAll();
        QCOMPARE(desk.source.state(), SourceState::ready());
    }

    void aFailureKeepsWhatWasThere()
    {
        Desk desk;
        desk.connectHub(snapshot(heard(1)));
        desk.say(HttpReply{});
        QCOMPARE(desk.source.state().message(),
                 u"Can't reach Quillbox at hub.example.net. Check your internet connection, or the address in Settings."_s);
        QCOMPARE(desk.source.snapshot().heard.size(), 1);
        desk.say(snapshot(heard(1) + "," + heard(2)));
        QCOMPARE(desk.source.state(), SourceState::ready());
        QCOMPARE(desk.peeks.size(), 1);
        const QSignalSpy changed(&desk.source, &VeltoSource::changed);
        const QSignalSpy taken(&desk.source, &QuillboxSource::snapshotTaken);
        desk.say(snapshot(heard(1) + "," + heard(2)));
        QCOMPARE(changed.count(), 0); // only changes are announced
        QCOMPARE(taken.count(), 1);
        desk.say(snapshot({}));
        QCOMPARE(changed.count(), 1);
    }

    void whatIsNewlyHeardIsTold()
    {
        Desk desk;
        desk.connectHub(snapshot(heard(1)));
        QVERIFY(desk.peeks.isEmpty()); // not new
        desk.say(snapshot(heard(1) + "," + heard(3, "Tolver: buy milk") + "," + heard(2)));
        desk.say(snapshot(heard(2)));
        QCOMPARE(desk.texts(), QStringList{u"buy milk"_s});
        const Peek &peek = desk.peeks.front();
        QCOMPARE(peek.symbol, u"ear"_s);
        QCOMPARE(peek.tone, Peek::Tone::Warn);
        QCOMPARE(peek.tab, Tab::Quillbox);
        desk.say(snapshot({}));
        desk.say(snapshot(heard(9)));
        QCOMPARE(desk.peeks.size(), 2);
    }

    void aSessionOfAnotherMachineIsTold()
    {
        Desk desk;
        desk.connectHub(snapshot({}, handoff(1, "sams-desk", "1") + "," + handoff(2, "air", "1")));
        desk.say(snapshot({}, handoff(1, "sams-desk", "2") + "," + handoff(2, "air", "1") + "," + handoff(3, "x-sams-desk")));
        QVERIFY(desk.peeks.isEmpty());
        desk.say(snapshot({}, handoff(2, "air", "2") + "," + handoff(4, {})));
        QCOMPARE(desk.texts(), QStringList{u"Other Mac · api"_s});
        QCOMPARE(desk.peeks.front().symbol, u"laptopcomputer"_s);
        QCOMPARE(desk.peeks.front().tone, Peek::Tone::Info);
        QCOMPARE(desk.peeks.front().tab, Tab::Agents);
        desk.say(snapshot({}, handoff(1, "air", "3")));
        QCOMPARE(desk.peeks.size(), 2);
    }

    void aReconnectBeginsAnew()
    {
        Desk desk;
        desk.connectHub(snapshot(heard(1)));
        desk.connectHub(snapshot(heard(2)));
        QVERIFY(desk.peeks.isEmpty());

        // A late answer of the previous hub is dropped.
        desk.clock.advance(std::chrono::seconds(10));
        desk.source.refresh();
        desk.quillboxMode = QuillboxMode::hub(QUrl(u"https://other.example.net"_s), {});
        desk.http.answer = [](const HttpRequest &) { return HttpReply{200, snapshot(heard(7)), {}}; };
        desk.source.reconnect();
        QCOMPARE(desk.source.state(), SourceState::loading());
        QVERIFY(desk.source.snapshot().heard.isEmpty());
        desk.background.finish(desk.background.pending() - 1);
        QCOMPARE(desk.source.snapshot().heard.value(0).id, 7);
        desk.background.finishAll();
        QCOMPARE(desk.source.snapshot().heard.value(0).id, 7);
        QVERIFY(desk.peeks.isEmpty());
    }

    void theViewIsToldInWords()
    {
        Desk desk;
        const QByteArray at = desk.clock.wallTime().toUTC().addSecs(-300).toString(u"yyyy-MM-dd HH:mm:ss"_s).toLatin1();
        desk.connectHub(snapshot(heard(1, "Tolver: milk") + "," + heard(2),
                                 handoff(1, "sams-desk", at) + "," + handoff(1, "air", at, "Handoff · web"),
                                 ", 'gap': {'id': 1, 'question': 'Why?', 'grip': 'Because.'}")
                            .replace("day\": {}", "day\": {\"note\": 3, \"fact\": 5, \"link\": 3}"));
        QCOMPARE(desk.source.badge(), 3);
        QCOMPARE(desk.source.savedToday(), u"Saved today: fact 5, note 3, link 3"_s);
        QCOMPARE(column(desk.source.rows(), "spoken"),
                 QStringList({u"This Mac: api, 5 min ago"_s, u"Other Mac: web, 5 min ago"_s, u"milk"_s, u"x"_s}));
        QCOMPARE(column(desk.source.rows(), "symbol").first(2),
                 QStringList({u"laptopcomputer"_s, u"laptopcomputer.and.arrow.down"_s}));
        QAbstractItemModel *other = desk.agents.otherMac();
        QCOMPARE(column(other, "name"), QStringList{u"web"_s});
        QCOMPARE(column(other, "age"), QStringList{u"Handoff 5 min ago"_s});
        desk.wait(90'000); // the ages change without any news
        desk.background.finishAll();
        QCOMPARE(column(other, "age"), QStringList{u"Handoff 6 min ago"_s});

        QVERIFY(desk.source.offersAnswer() && desk.source.cardAnswer().isEmpty());
        desk.source.openAnswer();
        QCOMPARE(desk.source.cardAnswer(), u"Because."_s);
        QVERIFY(!desk.source.offersAnswer());
        desk.say(snapshot({}, {}, ", 'gap': {'id': 2, 'question': 'How?', 'grip': 'So.'}"));
        QCOMPARE(desk.source.cardAnswer(), u"So."_s);
    }

private:
    static QStringList column(QAbstractItemModel *model, const QByteArray &role)
    {
        QStringList values;
        for (int row = 0; row < model->rowCount(); ++row)
            values.append(model->data(model->index(row, 0), model->roleNames().key(role)).toString());
        return values;
    }
};

const Registered<QuillboxSourceTest> registered;

} // namespace velto

#include "QuillboxSourceTest.moc"
