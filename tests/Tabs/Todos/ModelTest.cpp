#include "RunTests.h"
#include "Tabs/Todos/TodoDates.h"
#include "Tabs/Todos/TodoJson.h"
#include "Tabs/Todos/TodoTexts.h"
#include "Tabs/Todos/TodoTool.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

const Days kDays{u"2026-03-10"_s, u"2026-03-11"_s};

QString flattened(const Todo &todo)
{
    QStringList comments;
    for (const Comment &comment : todo.comments)
        comments += comment.at + u'=' + comment.text;
    return QStringList{QString::number(todo.id),   todo.title,         todo.details, todo.due, todo.who, todo.project, todo.scope,
                       QString::number(todo.prio), comments.join(u';')}
        .join(u'|');
}

} // namespace

class ModelTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rowsOfTheDatabase()
    {
        const auto row = [](const char *name, const QByteArray &json, const QString &expected) {
            QStringList rows;
            for (const Todo &todo : parseTodos(json))
                rows += flattened(todo);
            QVERIFY2(rows.join(u'\n') == expected, qPrintable(QLatin1StringView(name) + u": "_s + rows.join(u'\n')));
        };
        const auto tags = [&row](const char *name, QByteArray text, const QString &expected) {
            text.replace('\'', "\\\"");
            row(name, "[{\"id\":1,\"name\":\"T\",\"body\":\"B\",\"tags\":\"" + text + "\"}]", expected);
        };
        const auto body = [&row](const char *name, const QByteArray &text, const QString &expected) {
            row(name, "[{\"id\":1,\"name\":\"T\",\"tags\":\"[]\",\"body\":\"" + text + "\"}]", expected);
        };
        const QString plain = u"1|T|B||me||office|2|"_s;
        const QString start = u"1|T|text||me||office|2|"_s;
        tags("no tags", "[]", plain);
        tags("every tag", "['due:2026-01-02','who:Kim','project:p','scope:personal','prio:1','odd']",
             u"1|T|B|2026-01-02|Kim|p|personal|1|"_s);
        tags("further colons stay", "['due:2026-01-02:x']", u"1|T|B|2026-01-02:x|me||office|2|"_s);
        tags("the last one counts", "['who:a','who:b']", u"1|T|B||b||office|2|"_s);
        tags("open", "['status:open']", plain);
        tags("done", "['status:done']", QString());
        tags("another status", "['status:Open']", QString());
        tags("tags are no JSON", "due:x", QString());
        tags("tags are an object", "{}", QString());
        tags("a tag is a number", "[1]", QString());
        for (const auto &[tag, prio] : {std::pair{"", "2"},
                                        {"high", "2"},
                                        {"-3", "-3"},
                                        {"+4", "4"},
                                        {"+-4", "2"},
                                        {"1.5", "2"},
                                        {" 1", "2"},
                                        {"99999999999999999999", "2"}})
            tags(qPrintable(u"prio:%1"_s.arg(QLatin1StringView(tag))), "['prio:" + QByteArray(tag) + "']",
                 u"1|T|B||me||office|%1|"_s.arg(QLatin1StringView(prio)));

        body("no comments", R"(text\n\n## Comments\n)", start);
        body("comments", R"(text\n\n## Comments\n- 12 Mar · a · b\n\n13 Mar · c\n)", start + u"12 Mar=a · b;13 Mar=c"_s);
        body("a comment without a time", R"(text\n\n## Comments\nno separator here\n- x · y)", start + u"x=y"_s);
        body("a second heading ends them", R"(text\n\n## Comments\n- x · y\n\n## Comments\n- gone · gone)", start + u"x=y"_s);
        body("not quite the heading", R"(text\n## Comments\n- x · y)", u"1|T|text\n## Comments\n- x · y||me||office|2|"_s);

        row("neither name nor body", R"([{"id":2,"name":null,"tags":"[]"}])", u"2||||me||office|2|"_s);
        row("no id", R"([{"name":"T","tags":"[]"}])", QString());
        row("a fraction for an id", R"([{"id":1.5,"tags":"[]"}])", QString());
        row("no tags at all", R"([{"id":1}])", QString());
        row("a large id", R"([{"id":9007199254740993,"tags":"[]"}])", u"9007199254740993||||me||office|2|"_s);
        row("bad rows are dropped", R"([{"id":1},{"id":2,"tags":"[]"}])", u"2||||me||office|2|"_s);
        row("not only objects", R"([{"id":2,"tags":"[]"},7])", QString());
        row("an object", "{}", QString());
        row("nothing", QByteArray(), QString());
        row("an error", "Error: no such table", QString());
    }

    void aListComesBackFromItsFile()
    {
        Todo odd;
        odd.id = std::numeric_limits<qint64>::max();
        odd.title = u"“quotes” <b>&amp;</b> 🙂 \u0000\u2028"_s + QChar(0xD800);
        odd.details = u"several\nlines\t\\ \"\u001f\u007f/"_s;
        odd.prio = -1;
        odd.comments = {{u"now"_s, u"a"_s}, {QString(), QString()}};
        const auto members = [](QByteArray text) { return text.replace('\'', '"'); };
        odd.unknown = members("'z' : {'b':[1.0,12345678901234567890,{'c':'}],\\\\'}],'a':1e5},'Title':'\\'','\\u0069':null");
        odd.comments[0].unknown = members("'by':'them, \\\\','n':-9223372036854775809");
        Todo plain;
        plain.id = 1;
        QList<Todo> list{odd, plain};
        QCOMPARE(decodeTodos(encodeTodos(list)), std::optional(list));
        list += {odd, Todo{}}; // an id that is taken, and a draft's
        const QList<Todo> distinct = decodeTodos(encodeTodos(list)).value();
        QCOMPARE(distinct.value(2).id, 2);
        QCOMPARE(distinct.value(3).id, 3);
        QCOMPARE(QJsonDocument::fromJson(encodeTodos(list)).array().size(), 4);
        QCOMPARE(decodeTodos(encodeTodos({})), std::optional(QList<Todo>()));
    }

    void aFileIsTakenAsAWhole()
    {
        for (const auto &[from, to] : std::initializer_list<std::tuple<QByteArray, QByteArray>>{
                 {QByteArray(), QByteArray()},
                 {QByteArray(R"("comments":[{"at":"a","text":"b"}],)"), QByteArray()},
                 {QByteArray(R"("at":"a",)"), QByteArray()},
                 {QByteArray(R"("id":7)"), QByteArray(R"("id":"7")")},
                 {QByteArray(R"("prio":2)"), QByteArray(R"("prio":2.5)")},
                 {QByteArray(R"("who":"me")"), QByteArray(R"("who":null)")},
                 {QByteArray("}]\n"), QByteArray()},
                 {QByteArray("[{\"id\""), QByteArray("{\"a\":{\"id\"")},
                 {QByteArray("[{\"id\""), QByteArray("[7,{\"id\"")}}) {
            QByteArray json = R"([{"id":7,"comments":[{"at":"a","text":"b"}],"title":"t","details":"d","due":"","who":"me",)"
                              R"("project":"","scope":"office","prio":2,"further":1}])"
                              "\n";
            if (!from.isEmpty())
                QVERIFY(json.contains(from));
            json.replace(from.isEmpty() ? QByteArray("\n") : from, to);
            QCOMPARE(decodeTodos(json).has_value(), from.isEmpty());
        }
    }

    void datesAreComparedAsText()
    {
        for (const auto &[due, dueNow, overdue, filters, text] :
             std::initializer_list<std::tuple<QString, bool, bool, QString, QString>>{
                 {u"2026-03-10"_s, true, false, u"Today All"_s, u"Today"_s},
                 {u"2026-03-09"_s, true, true, u"Today Overdue All"_s, u"Overdue · Mon, Mar 9"_s},
                 {u"2026-03-11"_s, false, false, u"Upcoming All"_s, u"Tomorrow"_s},
                 {u"2026-03-21"_s, false, false, u"Upcoming All"_s, u"Sat, Mar 21"_s},
                 {QString(), false, false, u"Upcoming All"_s, QString()},
                 {u"1 May"_s, true, true, u"Today Overdue All"_s, u"Overdue · 1 May"_s},
                 {u"soon"_s, false, false, u"Upcoming All"_s, u"soon"_s},
                 {u"2026-02-30"_s, true, true, u"Today Overdue All"_s, u"Overdue · 2026-02-30"_s}}) {
            Todo todo;
            todo.due = due;
            QStringList passed;
            for (const Filter filter : kAllFilters) {
                if (passes(filter, todo, kDays.today))
                    passed += rawValue(filter);
            }
            QCOMPARE(todo.dueNow(kDays.today), dueNow);
            QCOMPARE(todo.overdue(kDays.today), overdue);
            QCOMPARE(passed.join(u' '), filters);
            QCOMPARE(dueText(todo, kDays), text);
        }
        QVERIFY(sortsBefore(u""_s, u"a"_s) && sortsBefore(u"a"_s, u"ab"_s) && !sortsBefore(u"a"_s, u"a"_s));
        QVERIFY(sortsBefore(u"\uFF5E"_s, u"😀"_s) && !sortsBefore(u"😀"_s, u"\uFF5E"_s)); // by code point
    }
};

} // namespace velto

static const Registered<velto::ModelTest> registered;

#include "ModelTest.moc"
