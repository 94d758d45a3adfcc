#include "RunTests.h"
#include "Shell/QuestionRows.h"
#include "Shell/QuestionText.h"
#include "Shell/TextDifference.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

Question question(const QString &tool, const QJsonValue &input, const QString &session = u"api"_s)
{
    return {session, u"/home/me/api"_s, tool, input};
}

/// "label: text", with − and + before removed and added lines.
QStringList told(const QList<QuestionPart> &parts)
{
    QStringList lines;
    for (const QuestionPart &part : parts) {
        const QString sign = part.look == QuestionPart::Look::Removed ? u"−"_s
            : part.look == QuestionPart::Look::Added                  ? u"+"_s
                                                                      : QString();
        lines.append((part.label.isEmpty() ? QString() : part.label + ": "_L1) + sign + part.text);
    }
    return lines;
}

} // namespace

/// What the user reads of a question, whatever its wording.
class QuestionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theRowTellsWhatCounts()
    {
        const auto row = [](const char *what, const QString &tool, const QJsonValue &input, const QString &line) {
            const QuestionLine read = questionLine(question(tool, input));
            const QString told = read.tool + u'|' + read.detail + u'|' + read.place;
            QVERIFY2(told == line, qPrintable(QLatin1StringView(what) + u": "_s + told));
        };
        row("a command", u"Bash"_s, QJsonObject{{u"command"_s, u"npm test"_s}}, u"Bash|npm test|"_s);
        row("its hidden half", u"Bash"_s, QJsonObject{{u"command"_s, u"ls\u200B\nrm -rf ~"_s}}, u"Bash|ls‹U+200B› ⏎ rm -rf ~|"_s);
        row("a file here", u"Edit"_s, QJsonObject{{u"file_path"_s, u"/home/me/api/a.c"_s}}, u"Edit|a.c|"_s);
        row("a file below", u"Write"_s, QJsonObject{{u"file_path"_s, u"/home/me/api/.git/hooks/pre-commit"_s}},
            u"Write|pre-commit|.git/hooks"_s);
        row("a file elsewhere", u"Edit"_s, QJsonObject{{u"file_path"_s, u"/home/me/.ssh/config"_s}},
            u"Edit|config|/home/me/.ssh"_s);
        row("a way out", u"Edit"_s, QJsonObject{{u"file_path"_s, u"/home/me/api/../.ssh/config"_s}},
            u"Edit|config|/home/me/api/../.ssh"_s);
        row("no file but a command", u"Edit"_s, QJsonObject{{u"command"_s, u"rm x"_s}}, u"Edit|command: \"rm x\"|"_s);
        // A harmless-looking field may not be all that another tool is given.
        row("a foreign tool", u"mcp__sh__run"_s, QJsonObject{{u"command"_s, u"rm"_s}, {u"file_path"_s, u"README"_s}},
            u"mcp__sh__run|command: \"rm\", file_path: \"README\"|"_s);
        row("an argument in an argument", u"mcp__a__b"_s,
            QJsonObject{{u"a"_s, u"x\", b: \"y"_s}, {u"c: 1, d"_s, 2}, {QString(), 3}},
            u"mcp__a__b|\"\": 3, a: \"x\\\", b: \\\"y\", \"c: 1, d\": 2|"_s);
        row("a list", u"x"_s, QJsonArray{1, u"a"_s}, u"x|[1,\"a\"]|"_s);
        row("nothing", u"x"_s, QJsonObject(), u"x||"_s);
        row("not even a tool", QString(), QJsonValue(QJsonValue::Undefined), u"||"_s);
    }

    void namesAndFoldersPoseAsNothingElse()
    {
        Question asked =
            question(u"Bash"_s, QJsonObject{{u"command"_s, u"rm"_s}}, u"app: Bash git\u202E\n"_s + QString(240'000, u'x'));
        asked.cwd = QString(240'000, u'/');
        const QuestionLine line = questionLine(asked);
        QVERIFY(line.session.startsWith(u"app: Bash git‹U+202E› ⏎ xxx"_s) && line.session.endsWith(u'…'));
        QVERIFY(line.session.size() < 500);
        QCOMPARE(line.tool + line.detail, u"Bashrm"_s);
        QCOMPARE(questionLine({{}, QString(), u"Read"_s, QJsonObject{{u"file_path"_s, u"/etc/x"_s}}}).place, u"/etc"_s);
        QCOMPARE(told(questionParts(asked)).first(), u"rm"_s); // who asks comes last
    }

    void allOfItUnfolds()
    {
        const QString here = u"Session: api"_s;
        const QString folder = u"Folder: /home/me/api"_s;
        QCOMPARE(told(questionParts(question(
                     u"Bash"_s, QJsonObject{{u"command"_s, u"a\nb"_s}, {u"description"_s, u"Do it"_s}, {u"timeout"_s, 5000}}))),
                 (QStringList{u"a\nb"_s, u"Described as: Do it"_s, u"Also given: {\"timeout\":5000}"_s, here, folder}));
        QCOMPARE(told(questionParts(question(u"Edit"_s,
                                             QJsonObject{{u"file_path"_s, u"/x/y"_s},
                                                         {u"old_string"_s, u"one\ntwo\nthree"_s},
                                                         {u"new_string"_s, u"one\n2\nthree\nfour"_s},
                                                         {u"replace_all"_s, true}}))),
                 (QStringList{u"File: /x/y"_s, u"Replaces: every place in the file"_s, u"one"_s, u"−two"_s, u"+2"_s, u"three"_s,
                              u"+four"_s, here, folder}));
        // A field that belongs to another tool can't make new lines look like old ones.
        QCOMPARE(
            told(questionParts(question(
                u"Write"_s, QJsonObject{{u"file_path"_s, u"/x"_s}, {u"content"_s, u"a\nb\n"_s}, {u"old_string"_s, u"a"_s}}))),
            (QStringList{u"File: /x"_s, u"+a\nb"_s, u"Also given: {\"old_string\":\"a\"}"_s, here, folder}));
        QCOMPARE(told(questionParts(question(u"ExitPlanMode"_s, QJsonObject{{u"plan"_s, u"# Plan\n1. Go"_s}}))),
                 (QStringList{u"Plan: # Plan\n1. Go"_s, here, folder}));
        QJsonArray deep{QJsonObject(), 1, 2};
        for (int i = 0; i < 5; ++i)
            deep = QJsonArray{deep};
        QCOMPARE(
            told(questionParts(question(u"mcp__a__b"_s, QJsonObject{{u"n\"[,"_s, deep}, {u"at"_s, QJsonArray{u"\\"_s, 1}}}))),
            (QStringList{u"Server: a"_s, u"Tool: b"_s,
                         u"Input: {\n    \"at\": [\n        \"\\\\\",\n        1\n    ],\n    \"n\\\"[,\": [\n        "
                         "[\n            [\n                [\n                    [\n                        [{}, 1, 2]\n"
                         "                    ]\n                ]\n            ]\n        ]\n    ]\n}"_s,
                         here, folder}));
        QCOMPARE(told(questionParts({u"api"_s, {}, u"Odd"_s, QJsonValue()})),
                 (QStringList{u"Tool: Odd"_s, u"Input: none"_s, here}));
    }

    void theDifferenceTurnsOneTextIntoTheOther()
    {
        quint32 seed = 7;
        const auto text = [&seed] {
            QStringList lines;
            for (int i = 0; i < 12; ++i)
                lines.append(QString(QChar(u'a' + char16_t((seed = seed * 1'664'525 + 1'013'904'223) >> 30))));
            return lines.join(u'\n');
        };
        for (int round = 0; round < 200; ++round) {
            qsizetype effort = round < 100 ? kMostCompared : 40;
            const QString before = text();
            const QString after = text();
            QStringList kept;
            QStringList come;
            for (const QuestionPart &part : difference(before, after, effort)) {
                if (part.look != QuestionPart::Look::Added)
                    kept.append(part.text);
                if (part.look != QuestionPart::Look::Removed)
                    come.append(part.text);
            }
            QCOMPARE(kept.join(u'\n'), before);
            QCOMPARE(come.join(u'\n'), after);
            QVERIFY(effort >= 0);
        }
    }

    void theLongestIsCutIntoPiecesAndNothingIsLost()
    {
        for (const QString &text : std::initializer_list<QString>{QString(256'000, u'x'), u"ab\n"_s.repeated(85'000) + u"end"_s,
                                                                  QString(200'000, u'\n') + u"end"_s}) {
            QuestionRows rows;
            rows.set({{{}, text, QuestionPart::Look::Exact, false}});
            const int role = rows.roleNames().key("words");
            const int continued = rows.roleNames().key("continued");
            QString all;
            for (int row = 0; row < rows.rowCount(); ++row) {
                const QString piece = rows.index(row).data(role).toString();
                QVERIFY2(piece.size() <= 2 * QuestionRows::kMostCharacters, qPrintable(QString::number(piece.size())));
                QVERIFY(piece.count(u'\n') <= QuestionRows::kMostLines);
                all += (row == 0 || rows.index(row).data(continued).toBool() ? QString() : u"\n"_s) + piece;
            }
            QVERIFY(rows.told().size() <= QuestionRows::kMostTold + 1);
            QCOMPARE(rows.told().endsWith(u'…'), !text.startsWith(u'\n'));
            if (text.startsWith(u'\n'))
                QVERIFY(all.startsWith(u"\n‹⏎×19999"_s) && all.endsWith(u"\nend"_s));
            else
                QCOMPARE(all, text);
        }
        QuestionRows rows;
        const QJsonObject edit{{u"old_string"_s, u"1"_s}, {u"new_string"_s, u"2"_s}};
        rows.set(questionParts(
            {u"api"_s, {}, u"MultiEdit"_s, QJsonObject{{u"file_path"_s, u"/x"_s}, {u"edits"_s, QJsonArray{edit}}}}));
        QCOMPARE(rows.told(), u"File: /x\nChange 1: Removed: 1\nAdded: 2\nSession: api"_s);
    }
};

const Registered<QuestionTest> registered;

} // namespace velto

#include "QuestionTest.moc"
