#include "Tabs/Todos/HubTodos.h"

#include <QJsonArray>
#include <QTextBoundaryFinder>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// "Ship v2.0 — now!" becomes "ship-v2-0-now". Counts characters as the user sees them.
QString slugOf(const QString &title)
{
    constexpr qsizetype kLongest = 60;
    const QString text = title.toLower();
    QStringList characters;
    bool apart = false;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to >= 0; from = to, to = finder.toNextBoundary()) {
        const QString character = text.sliced(from, to - from);
        if (!QChar::isLetterOrNumber(character.toUcs4().value(0))) {
            apart = true;
            continue;
        }
        if (apart && !characters.isEmpty())
            characters.append(u"-"_s);
        apart = false;
        characters.append(character);
    }
    return characters.mid(0, kLongest).join(QString());
}

} // namespace

QList<Todo> todosOf(const VeltoSnapshot &snapshot)
{
    QList<Todo> todos;
    for (const VeltoSnapshot::HubTodo &record : snapshot.todos) {
        Todo todo{record.id, record.title, {}, record.due, record.who, record.project, record.scope, record.prio, {}};
        readBody(record.body, todo);
        todos.append(std::move(todo));
    }
    return todos;
}

HubCall hubSave(const Todo &todo)
{
    const QJsonArray tags{
        u"todo"_s,
        u"status:open"_s,
        "due:"_L1 + todo.due,
        "who:"_L1 + todo.who,
        "project:"_L1 + todo.project,
        "scope:"_L1 + todo.scope,
        u"prio:%1"_s.arg(todo.prio),
    };
    const QJsonObject body{
        {u"title"_s, todo.title}, {u"body"_s, todo.details}, {u"type"_s, u"todo"_s},
        {u"topic"_s, u"todo"_s},  {u"tags"_s, tags},         {u"filename"_s, "todo/"_L1 + slugOf(todo.title)},
    };
    return {u"/api/write"_s, body};
}

HubCall hubDone(qint64 id)
{
    return {u"/api/todo/%1/done"_s.arg(id), {}};
}

} // namespace velto
