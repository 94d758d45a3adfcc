#include "Feeds/Glances/VideoPreview.h"
#include "Feeds/Usage/Pace.h"
#include "RunTests.h"
#include "World.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// A brief without any news; each test adds its own.
struct Morning : World {

    Morning() { background.finishAll(); }

    QStringList ids() const
    {
        QStringList result;
        for (const HomeItem &item : home.items())
            result.append(item.id);
        return result;
    }
    HomeItem item(const QString &id) const
    {
        for (const HomeItem &each : home.items()) {
            if (each.id == id)
                return each;
        }
        return {};
    }
    QStringList rows(QAbstractItemModel *model) const
    {
        QStringList result;
        for (const RowModel::Row &row : static_cast<RowModel *>(model)->rows())
            result.append(row.first().toString());
        return result;
    }
};

} // namespace

class BriefTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aQuietDeskIsAllClear()
    {
        const World first;
        QCOMPARE(first.home.headlineText(), u"Checking…"_s);
        QCOMPARE(first.home.headlineTone(), HomeSource::Off);
        Morning m;
        QCOMPARE(m.ids(), QStringList{u"focus"_s});
        QCOMPARE(m.home.headlineText(), u"All clear"_s);
        QCOMPARE(m.home.headlineTone(), HomeSource::Info);
        QCOMPARE(m.home.badge(), 0);
        m.prefs.set(Prefs::Module::Focus, false);
        m.wait(0);
        QVERIFY(m.ids().isEmpty());
    }

    void sessionsThatWaitComeFirstAndTheSpotlightSpeaksForThem()
    {
        Morning m;
        m.setSessions(1, 2);
        m.refresh();
        QCOMPARE(m.item(u"agents-wait"_s).title, u"2 agents are waiting for you"_s);
        QCOMPARE(m.item(u"agents-wait"_s).action->label, u"Show"_s); // it has no session id with which it could be resumed
        QCOMPARE(m.item(u"agents-run"_s).title, u"session 0 is working"_s);
        QCOMPARE(m.home.headlineText(), u"1 thing needs you"_s);
        QVERIFY(m.home.spotlight()->working());
        QCOMPARE(m.rows(m.home.needs()), QStringList{u"agents-wait"_s}); // the spotlight shows another session
        m.home.run(u"agents-wait"_s);
        QCOMPARE(m.hub.selected(), Tab::Agents);
        m.setSessions(0, 2);
        m.refresh();
        QCOMPARE(m.rows(m.home.needs()), QStringList{u"agents-wait"_s}); // or one of two
        m.setSessions(0, 1);
        m.refresh();
        QVERIFY(m.home.spotlight()->present() && !m.home.spotlight()->working());
        QVERIFY(m.rows(m.home.needs()).isEmpty());
        QCOMPARE(m.home.headlineText(), u"1 thing needs you"_s);
    }

    void todosCountWhatIsLateAndWhatIsDue()
    {
        using Rows = QList<std::tuple<QString, int, int, QString>>;
        for (const auto &[todos, late, due] : std::initializer_list<std::tuple<Rows, QString, QString>>{
                 {Rows{{u"a"_s, -1, 2, {}}}, u"1 todo is overdue / a"_s, QString()},
                 {Rows{{u"a"_s, -1, 2, {}}, {u"b"_s, -3, 1, {}}}, u"2 todos are overdue / b"_s, QString()},
                 {Rows{{u"a"_s, -1, 1, {}}, {u"b"_s, -2, 2, u"Sales Q4"_s}}, u"1 sales follow-up is overdue / b"_s, QString()},
                 {Rows{{u"a"_s, 0, 2, {}}, {u"b"_s, 1, 2, {}}}, QString(), u"1 todo due today / a"_s},
                 {Rows{{u"a"_s, 0, 2, u"outreach"_s}, {u"b"_s, 0, 1, u"outreach"_s}}, QString(),
                  u"2 sales follow-ups due today / b"_s}}) {
            Morning m;
            for (const auto &[title, days, prio, project] : todos)
                m.addTodo(title, days, prio, project);
            const auto words = [&m](const QString &id) {
                const HomeItem item = m.item(id);
                return item.id.isEmpty() ? QString() : u"%1 / %2"_s.arg(item.title, item.detail);
            };
            QCOMPARE(words(u"late"_s), late);
            QCOMPARE(words(u"due"_s), due);
            if (!late.isEmpty()) {
                QCOMPARE(m.home.headlineTone(), HomeSource::Bad);
                m.home.run(u"late"_s);
                QCOMPARE(m.hub.selected(), Tab::Todos);
                QCOMPARE(m.todos.shown()->filter(), Filter::Overdue);
            }
        }
    }

    void aMeetingIsUrgentWithinFifteenMinutes()
    {
        for (const int seconds : {899, 900}) {
            Morning m;
            m.meetIn(seconds);
            QCOMPARE(m.rows(m.home.next()), QStringList({u"cal"_s, u"focus"_s}));
            QCOMPARE(m.rows(m.home.needs()), seconds < 900 ? QStringList{u"cal"_s} : QStringList());
            QCOMPARE(m.item(u"cal"_s).urgent(), seconds < 900);
            m.home.run(u"cal"_s);
            QCOMPARE(m.workspace.opened, QList<QUrl>{QUrl(u"https://meet.example.com/x"_s)});
        }
    }

    void whatIsNotSetUpStandsInOneLine()
    {
        Morning m;
        for (const auto module : {Prefs::Module::Calendar, Prefs::Module::Prs, Prefs::Module::Work})
            m.prefs.set(module, true);
        m.refresh();
        QCOMPARE(m.home.setupText(), u"Not set up: Calendar, GitHub, Work tools"_s);
        QVERIFY(m.rows(m.home.today()).isEmpty());
        m.home.openConnect();
        QCOMPARE(m.hub.selected(), Tab::Connect);
    }

    void todayShowsFourRows()
    {
        Morning m;
        m.addTodo(u"a"_s, 0);
        m.prefs.setDailyPriority(u"ship it"_s);
        m.prefs.set(Prefs::Module::Work, true);
        m.keychain.put(u"Velto.linear"_s, u"t"_s);
        m.http.answer = [](const HttpRequest &) {
            return HttpReply{200, R"({"data":{"viewer":{"assignedIssues":{"nodes":[{"identifier":"X-1","title":"t"}]}}}})", {}};
        };
        m.refresh();
        QCOMPARE(m.rows(m.home.today()), QStringList({u"issues"_s, u"due"_s, u"priority"_s}));
        m.prefs.setDailyPriority(u"   "_s);
        m.wait(0);
        QVERIFY(!m.ids().contains(u"priority"_s));
    }

    void paceTellsHowTheBudgetWillGo()
    {
        constexpr auto kMost = std::numeric_limits<qint64>::max();
        for (const auto &[used, budget, elapsed, text] : std::initializer_list<std::tuple<qint64, qint64, int, QString>>{
                 {qint64(5), qint64(0), 700, QString()},
                 {qint64(1'000'000), qint64(1'000'000), 700, u"Daily budget of 1.0M reached"_s},
                 {kMost, kMost, 700, u"Daily budget of 9223372036854.8M reached"_s},
                 {-kMost, qint64(100'000), 700, u"100k left of today's 100k"_s},
                 {qint64(1000), qint64(100'000), 600, u"99k left of today's 100k"_s},
                 {qint64(10), qint64(1'000'000), 601, u"On pace to stay under your 1.0M budget today"_s},
                 {qint64(50'000), qint64(100'000), 3600, u"At this pace you reach your 100k budget at 11:00"_s}}) {
            const QDateTime now(QDate(2026, 11, 21), QTime(10, 0));
            TokenUsage usage;
            usage.input = used;
            usage.output = used == std::numeric_limits<qint64>::max() ? used : 0;
            usage.cacheRead = 1'000'000'000; // doesn't count
            usage.first = now.addSecs(-elapsed);
            QCOMPARE(pace(usage, budget, now).value_or(QString()), text);
        }
    }

    void whatRunsAndWhatWasCopiedStandsInItsRow()
    {
        Morning m;
        QCOMPARE(m.item(u"focus"_s).action->label, u"Start 25 min"_s);
        m.home.run(u"focus"_s);
        QCOMPARE(m.item(u"focus"_s).title, u"Focusing · 25:00 left"_s);
        m.wait(61'000);
        QCOMPARE(m.item(u"focus"_s).title, u"Focusing · 23:59 left"_s);
        m.home.run(u"focus"_s);
        QCOMPARE(m.item(u"focus"_s).title, u"Focus timer"_s);

        m.prefs.set(Prefs::Module::Media, true);
        m.players.players = {{{u"mpv"_s}, MediaReport{u"mpv"_s, u"Tone"_s, {}, MediaReport::State::Playing}}};
        m.everyday.refresh();
        QCOMPARE(m.item(u"media"_s).title, u"Tone"_s);
        QCOMPARE(m.item(u"media"_s).detail, u"mpv"_s); // there is no artist

        for (const auto &[link, label] :
             {std::pair(u"https://a.example/x"_s, u"Open"_s), std::pair(u"file://host/x"_s, QString()),
              std::pair(u"https://youtu.be/x"_s, u"Play"_s)}) {
            m.clipboard.setText(link);
            m.glances.refresh();
            m.background.finishAll();
            const HomeItem item = m.item(u"clipboard"_s);
            QCOMPARE(item.id, u"clipboard"_s);
            QCOMPARE(item.action ? item.action->label : QString(), label);
        }
    }

    void greetingGoesByTheHour()
    {
        for (const auto &[hour, minute, words] : {std::tuple(4, 59, u"Good evening."_s), std::tuple(5, 0, u"Good morning."_s),
                                                  std::tuple(12, 0, u"Good afternoon."_s), std::tuple(17, 0, u"Good evening."_s)})
            QCOMPARE(greeting(QDateTime(QDate(2026, 11, 21), QTime(hour, minute))), words);
    }

    void videosAreFoundAndEscaped()
    {
        for (const auto &[link, id, inPage] : std::initializer_list<std::tuple<QString, QString, QString>>{
                 {u"https://youtu.be/abc123"_s, u"abc123"_s, u"/embed/abc123?autoplay=1"_s},
                 {u"https://www.youtube.com/watch?t=3&v=xY9_-z"_s, u"xY9_-z"_s, u"/embed/xY9%5F%2Dz?"_s},
                 {u"https://www.youtube.com/shorts/Ab1?si=x"_s, u"Ab1"_s, u"/embed/Ab1?"_s},
                 {u"https://m.youtube.com/live/Cd2"_s, u"Cd2"_s, u"/embed/Cd2?"_s},
                 {u"https://www.youtube.com/@someone"_s, QString(), u"<video "_s},
                 {u"https://youtu.be/x'%20onload='alert(1)"_s, u"x' onload='alert(1)"_s,
                  u"/embed/x%27%20onload%3D%27alert%281%29?"_s},
                 {u"https://youtube.com/a'onerror='x"_s, QString(), u"a%27onerror=%27x"_s}}) {
            QCOMPARE(youtubeID(QUrl(link)).value_or(QString()), id);
            const QString html = videoPage(QUrl(link)).html;
            QVERIFY2(html.contains(inPage), qPrintable(html));
        }
    }
};

} // namespace velto

QTEST_GUILESS_MAIN(velto::BriefTest)
#include "BriefTest.moc"
