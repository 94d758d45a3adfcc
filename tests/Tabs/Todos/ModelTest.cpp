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
    void rowsOfTheDatabase_data()
    {
        columns<QByteArray, QString>({"json", "expected"});
        const auto tags = [](const char *name, QByteArray text, const QString &expected) {
            text.replace('\'', "\\\"");
            QTest::newRow(name) << "[{\"id\":1,\"name\":\"T\",\"body\":\"B\",\"tags\":\"" + text + "\"}]" << expected;
        };
        const auto body = [](const char *name, const QByteArray &text, const QString &expected) {
            QTest::newRow(name) << "[{\"id\":1,\"name\":\"T\",\"tags\":\"[]\",\"body\":\"" + text + "\"}]" << expected;
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

        QTest::newRow("neither name nor body") << QByteArray(R"([{"id":2,"name":null,"tags":"[]"}])") << u"2||||me||office|2|"_s;
        QTest::newRow("no id") << QByteArray(R"([{"name":"T","tags":"[]"}])") << QString();
        QTest::newRow("a fraction for an id") << QByteArray(R"([{"id":1.5,"tags":"[]"}])") << QString();
        QTest::newRow("no tags at all") << QByteArray(R"([{"id":1}])") << QString();
        QTest::newRow("a large id") << QByteArray(R"([{"id":9007199254740993,"tags":"[]"}])")
                                    << u"9007199254740993||||me||office|2|"_s;
        QTest::newRow("bad rows are dropped") << QByteArray(R"([{"id":1},{"id":2,"tags":"[]"}])") << u"2||||me||office|2|"_s;
        QTest::newRow("not only objects") << QByteArray(R"([{"id":2,"tags":"[]"},7])") << QString();
        QTest::newRow("an object") << QByteArray("{}") << QString();
        QTest::newRow("nothing") << QByteArray() << QString();
        QTest::newRow("an error") << QByteArray("Error: no such table") << QString();
    }

    void rowsOfTheDatabase()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, expected);
        QStringList rows;
        for (const Todo &todo : parseTodos(json))
            rows += flattened(todo);
        QCOMPARE(rows.join(u'\n'), expected);
    }

    void aListComesBackFromItsFile()
    {
        Todo odd;
        odd.id = std::numeric_limits<qint64>::max();
        odd.title = u"“quotes” <b>&amp;</b> 🙂 \u0000\u2028"_s + QChar(0xD800);
        odd.details = u"several\nlines\t\\ \"\u001f\u007f/"_s;
        odd.prio = -1;
        odd.comments = {{u"now"_s, u"a"_s}, {QString(), QString()}};
        odd.unknown = {{u"later"_s, QJsonObject{{u"a"_s, QJsonArray{1, QJsonValue()}}}}};
        odd.comments[0].unknown = {{u"by"_s, u"them"_s}};
        Todo plain;
        plain.id = 1;
        QList<Todo> list{odd, plain};
        QCOMPARE(decodeTodos(encodeTodos(list)), std::optional(list));
        list += {odd, Todo{}}; // a number that is taken, and a draft's
        const QList<Todo> distinct = decodeTodos(encodeTodos(list)).value();
        QCOMPARE(distinct.value(2).id, 2);
        QCOMPARE(distinct.value(3).id, 3);
        QCOMPARE(QJsonDocument::fromJson(encodeTodos(list)).array().size(), 4);
        QCOMPARE(decodeTodos(encodeTodos({})), std::optional(QList<Todo>()));
    }

    void aFileIsTakenAsAWhole_data()
    {
        columns<QByteArray, QByteArray>({"from", "to"});
        QTest::newRow("whole") << QByteArray() << QByteArray();
        QTest::newRow("no comments") << QByteArray(R"("comments":[{"at":"a","text":"b"}],)") << QByteArray();
        QTest::newRow("a comment without a text") << QByteArray(R"("at":"a",)") << QByteArray();
        QTest::newRow("a text for a number") << QByteArray(R"("id":7)") << QByteArray(R"("id":"7")");
        QTest::newRow("a fraction") << QByteArray(R"("prio":2)") << QByteArray(R"("prio":2.5)");
        QTest::newRow("null for a text") << QByteArray(R"("who":"me")") << QByteArray(R"("who":null)");
        QTest::newRow("cut off") << QByteArray("}]\n") << QByteArray();
        QTest::newRow("no list") << QByteArray("[{\"id\"") << QByteArray("{\"a\":{\"id\"");
        QTest::newRow("an entry that is no todo") << QByteArray("[{\"id\"") << QByteArray("[7,{\"id\"");
    }

    void aFileIsTakenAsAWhole()
    {
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QByteArray json = R"([{"id":7,"comments":[{"at":"a","text":"b"}],"title":"t","details":"d","due":"","who":"me",)"
                          R"("project":"","scope":"office","prio":2,"further":1}])"
                          "\n";
        if (!from.isEmpty())
            QVERIFY(json.contains(from));
        json.replace(from.isEmpty() ? QByteArray("\n") : from, to);
        QCOMPARE(decodeTodos(json).has_value(), from.isEmpty());
    }

    void datesAreComparedAsText_data()
    {
        columns<QString, bool, bool, QString, QString>({"due", "dueNow", "overdue", "filters", "text"});
        QTest::newRow("today") << u"2026-03-10"_s << true << false << u"Today All"_s << u"Today"_s;
        QTest::newRow("yesterday") << u"2026-03-09"_s << true << true << u"Today Overdue All"_s << u"Overdue · Mon, Mar 9"_s;
        QTest::newRow("tomorrow") << u"2026-03-11"_s << false << false << u"Upcoming All"_s << u"Tomorrow"_s;
        QTest::newRow("later") << u"2026-03-21"_s << false << false << u"Upcoming All"_s << u"Sat, Mar 21"_s;
        QTest::newRow("none") << QString() << false << false << u"Upcoming All"_s << QString();
        QTest::newRow("no date, early") << u"1 May"_s << true << true << u"Today Overdue All"_s << u"Overdue · 1 May"_s;
        QTest::newRow("no date, late") << u"soon"_s << false << false << u"Upcoming All"_s << u"soon"_s;
        QTest::newRow("no such day") << u"2026-02-30"_s << true << true << u"Today Overdue All"_s << u"Overdue · 2026-02-30"_s;
    }

    void datesAreComparedAsText()
    {
        QFETCH(QString, due);
        Todo todo;
        todo.due = due;
        QStringList filters;
        for (const Filter filter : kAllFilters) {
            if (passes(filter, todo, kDays.today))
                filters += rawValue(filter);
        }
        QTEST(todo.dueNow(kDays.today), "dueNow");
        QTEST(todo.overdue(kDays.today), "overdue");
        QTEST(filters.join(u' '), "filters");
        QTEST(dueText(todo, kDays), "text");
    }

    void textIsOrderedByCodePoint()
    {
        QVERIFY(sortsBefore(u""_s, u"a"_s) && sortsBefore(u"a"_s, u"ab"_s) && !sortsBefore(u"a"_s, u"a"_s));
        QVERIFY(sortsBefore(u"\uFF5E"_s, u"😀"_s) && !sortsBefore(u"😀"_s, u"\uFF5E"_s));
    }

    void datesFollowTheLanguage_data()
    {
        columns<QString, QString, QString>({"language", "date", "time"});
        QTest::newRow("en_US") << u"en_US"_s << u"Tue, Mar 10"_s << u"Mar 10, 2026, 5:04 PM"_s;
        QTest::newRow("en_GB") << u"en_GB"_s << u"Tue, 10 Mar"_s << u"10 Mar 2026, 17:04"_s;
        QTest::newRow("none") << u"C"_s << u"Tue, 10 Mar"_s << u"10 Mar 2026, 17:04"_s;
        QTest::newRow("de") << u"de_DE"_s << u"Di., 10. März"_s << u"10. März 2026, 17:04"_s;
        QTest::newRow("es") << u"es_ES"_s << u"mar, 10 de mar"_s << u"10 de mar de 2026, 17:04"_s;
        QTest::newRow("ja") << u"ja_JP"_s << u"3月10日火"_s << u"2026年3月10日, 17:04"_s;
        QTest::newRow("hu") << u"hu_HU"_s << u"márc. 10., K"_s << u"2026. márc. 10., 17:04"_s;
    }

    void datesFollowTheLanguage()
    {
        QFETCH(QString, language);
        const QLocale locale(language);
        QTEST(shortDate(u"2026-03-10"_s, locale), "date");
        const QString time = shortDateTime(QDateTime(QDate(2026, 3, 10), QTime(17, 4)), locale);
        QTEST(QString(time).replace(QChar(0x202F), u' '), "time");
        QCOMPARE(shortDate(u"soon"_s, locale), u"soon"_s);
    }

    void aRowInOneSentence_data()
    {
        columns<int, QString, QString, int, QString>({"prio", "due", "who", "comments", "spoken"});
        QTest::newRow("plain") << 2 << QString() << u"me"_s << 0 << u"Call"_s;
        QTest::newRow("nobody") << 2 << QString() << QString() << 0 << u"Call"_s;
        QTest::newRow("everything") << 1 << u"2026-03-09"_s << u"Kim"_s << 2
                                    << u"Call, High priority, due Overdue · Mon, Mar 9, with Kim, 2 comments"_s;
        QTest::newRow("low") << 3 << u"2026-03-11"_s << u"me"_s << 1 << u"Call, Low priority, due Tomorrow, 1 comments"_s;
        QTest::newRow("unknown") << 7 << QString() << u"me"_s << 0 << u"Call, Normal priority"_s;
    }

    void aRowInOneSentence()
    {
        QFETCH(int, prio);
        QFETCH(QString, due);
        QFETCH(QString, who);
        QFETCH(int, comments);
        Todo todo;
        todo.title = u"Call"_s;
        todo.prio = prio;
        todo.due = due;
        todo.who = who;
        todo.comments.resize(comments);
        QTEST(accessibleSummary(todo, kDays), "spoken");
    }
};

} // namespace velto

static const Registered<velto::ModelTest> registered;

#include "ModelTest.moc"
