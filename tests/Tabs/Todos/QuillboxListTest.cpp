#include "HttpStandIn.h"
#include "RunTests.h"
#include "Tabs/Todos/Desk.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velto {

namespace {

using Manner = HttpStandIn::Manner;

QJsonObject record(int id, const QString &title)
{
    return {{u"id"_s, id},
            {u"title"_s, title},
            {u"body"_s, u"text\n\n## Comments\n- Mon · said"_s},
            {u"due"_s, Desk::kToday},
            {u"who"_s, QString()},
            {u"project"_s, u"p"_s},
            {u"scope"_s, u"office"_s},
            {u"prio"_s, 0}};
}

QByteArray snapshot(const QJsonArray &todos)
{
    return QJsonDocument(QJsonObject{{u"todos"_s, todos},
                                     {u"handoffs"_s, QJsonArray()},
                                     {u"heard"_s, QJsonArray()},
                                     {u"written_today"_s, QJsonObject()}})
        .toJson();
}

} // namespace

/// The todos of a hub on the network.
class QuillboxListTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        m_hub = std::make_unique<HttpStandIn>();
        m_hub->answer = [this](const HttpStandIn::Request &request) {
            return request.method == "POST" ? m_posted : HttpStandIn::Answer{200, snapshot(m_todos)};
        };
        m_todos = {record(7, u"from the hub"_s)};
        m_posted = {};
        m_desk = std::make_unique<Desk>();
        m_desk->mode = QuillboxMode::hub(m_hub->url(), u"secret"_s);
        m_desk->start();
        m_desk->quillbox->refresh();
        QVERIFY(settles([this] { return m_desk->source->todos().size() == 1; }));
    }

    void theListIsTheHubs()
    {
        const TodosSource &source = *m_desk->source;
        Todo expected = makeTodo(7, u"from the hub"_s, Desk::kToday, 0, u"p"_s);
        expected.who.clear();
        expected.details = u"text"_s;
        expected.comments = {{u"Mon"_s, u"said"_s}};
        QCOMPARE(source.todos(), QList{expected});
        QCOMPARE(source.label(), u"Hub · 127.0.0.1"_s);
        QVERIFY(!source.canEdit() && source.canAdd());
        QCOMPARE(source.readOnlyNote(), QString());
        QVERIFY(m_desk->fakeFiles.contents.isEmpty());
    }

    void aSaveIsAWriteUnderTheSlug()
    {
        TodosSource &source = *m_desk->source;
        Todo todo = makeTodo(7, u"Ship v2.0 — now!"_s, Desk::kTomorrow, 1, u"p"_s);
        todo.details = u"d"_s;
        source.setDraft(todo);
        source.form()->save();
        QVERIFY(!source.form()->shown());
        QCOMPARE(source.errorText(), QString());
        QVERIFY(settles([this] { return posts().size() == 1; }));
        const HttpStandIn::Request request = posts().value(0);
        QCOMPARE(request.target, QByteArray("/api/write"));
        QCOMPARE(request.headers.value("authorization"), QByteArray("Bearer secret"));
        const QJsonObject body = QJsonDocument::fromJson(request.body).object();
        const QJsonArray tags{u"todo"_s,      u"status:open"_s,  u"due:2026-11-22"_s, u"who:me"_s,
                              u"project:p"_s, u"scope:office"_s, u"prio:1"_s};
        QCOMPARE(body,
                 (QJsonObject{{u"title"_s, todo.title},
                              {u"body"_s, u"d"_s},
                              {u"type"_s, u"todo"_s},
                              {u"topic"_s, u"todo"_s},
                              {u"filename"_s, u"todo/ship-v2-0-now"_s},
                              {u"tags"_s, tags}}));
        QVERIFY(settles([this] { return m_hub->requests.size() == 3; })); // and the list is fetched at once
    }

    void slugs()
    {
        for (const auto &[title, slug] :
             std::initializer_list<std::tuple<QString, QString>>{{u"?!…"_s, QString()},
                                                                 {u"Über 東京 e\u0301té ½"_s, u"über-東京-e\u0301té-½"_s},
                                                                 {QString(90, u'a'), QString(60, u'a')},
                                                                 {QString(59, u'a') + u" b"_s, QString(59, u'a') + u'-'}}) {
            const auto before = posts().size();
            m_desk->source->save(makeTodo(0, title));
            QVERIFY(settles([&] { return posts().size() == before + 1; }));
            const QJsonObject body = QJsonDocument::fromJson(posts().last().body).object();
            QCOMPARE(body[u"filename"_s].toString(), u"todo/"_s + slug);
        }
    }

    void aDoneMarkGoesOutWhenTheUndoIsOver()
    {
        TodosSource &source = *m_desk->source;
        source.finish(u"7"_s);
        QVERIFY(source.todos().isEmpty());
        m_desk->wait(4s);
        QCOMPARE(posts().size(), 0);
        m_desk->wait(1s);
        m_todos = {};
        QVERIFY(settles([this] { return posts().size() == 1; }));
        QCOMPARE(posts().value(0).target, QByteArray("/api/todo/7/done"));
        QCOMPARE(posts().value(0).body, QByteArray("{}"));

        // To the previous hub too, although the user has left it.
        m_todos = {record(9, u"another"_s)};
        m_desk->quillbox->fetchAgain();
        QVERIFY(settles([&] { return source.todos().size() == 1; }));
        source.finish(u"9"_s);
        m_desk->mode = {};
        m_desk->quillbox->reconnect();
        QVERIFY(settles([this] { return posts().size() == 2; }));
        QCOMPARE(posts().value(1).target, QByteArray("/api/todo/9/done"));
    }

    void aSnapshotInTheMiddleOfTheUndoBringsItBackOnce()
    {
        TodosSource &source = *m_desk->source;
        source.finish(u"7"_s);
        m_todos.append(record(8, u"new"_s));
        m_desk->quillbox->fetchAgain();
        QVERIFY(settles([&] { return source.todos().size() == 2; }));
        source.undoDone();
        QCOMPARE(titlesOf(source.todos()), QStringList({u"from the hub"_s, u"new"_s}));
    }

    void aHubThatRefusesIsToldOf()
    {
        for (const auto &[status, manner, said] : {std::tuple(201, Manner::Whole, u"answered 201"_s),
                                                   {503, Manner::Whole, u"had a problem (503)"_s},
                                                   {200, Manner::CutOff, u"Can't reach Quillbox at 127.0.0.1"_s}}) {
            init();
            m_posted = {status, "{\"a\": 1}", {}, manner};
            TodosSource &source = *m_desk->source;
            source.save(makeTodo(0, u"x"_s));
            QVERIFY(settles([&, words = said] { return source.errorText().contains(words); }));
            QCOMPARE(titlesOf(source.todos()), QStringList{u"from the hub"_s});
            source.finish(u"7"_s);
            m_desk->wait(5s);
            QVERIFY(settles([&] { return posts().back().target == "/api/todo/7/done" && source.todos().size() == 1; }));
            QVERIFY(settles([&, words = said] { return source.errorText().contains(words); }));
        }
    }

    void theEndMayComeInTheMiddle()
    {
        m_posted.manner = Manner::Silent;
        m_desk->source->save(makeTodo(0, u"x"_s));
        QVERIFY(settles([this] { return posts().size() == 1; }));
        m_desk->source.reset();
        m_desk.reset();
        QCoreApplication::processEvents();
    }

private:
    bool settles(const std::function<bool()> &done)
    {
        return QTest::qWaitFor([&] {
            m_desk->background.finishAll();
            return done();
        });
    }
    QList<HttpStandIn::Request> posts() const
    {
        QList<HttpStandIn::Request> posts;
        std::ranges::copy_if(m_hub->requests, std::back_inserter(posts),
                             [](const HttpStandIn::Request &request) { return request.method == "POST"; });
        return posts;
    }

    std::unique_ptr<HttpStandIn> m_hub;
    QJsonArray m_todos;
    HttpStandIn::Answer m_posted;
    std::unique_ptr<Desk> m_desk;
};

} // namespace velto

static const Registered<velto::QuillboxListTest> registered;

#include "QuillboxListTest.moc"
