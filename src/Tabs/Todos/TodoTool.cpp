#include "Tabs/Todos/TodoTool.h"

#include "Core/Texts.h"
#include "Platform/Files.h"
#include "Platform/ToolRunner.h"

#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <algorithm>
#include <charconv>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kTimeout{20};
constexpr qint64 kLongestScript = 16 * 1024 * 1024;

std::optional<qint64> integerOf(const QJsonValue &value)
{
    constexpr qint64 kNone = std::numeric_limits<qint64>::min();
    const qint64 integer = value.toInteger(kNone);
    return integer == kNone && value.toInteger(0) != kNone ? std::nullopt : std::optional(integer);
}

/// An optional sign and ASCII digits, nothing else.
std::optional<qint64> decimalOf(const QString &text)
{
    const QByteArray digits = text.toUtf8();
    const char *begin = digits.constBegin();
    if (digits.startsWith('+') && !digits.startsWith("+-"))
        ++begin;
    qint64 number = 0;
    const auto [end, error] = std::from_chars(begin, digits.constEnd(), number);
    return error == std::errc() && end == digits.constEnd() ? std::optional(number) : std::nullopt;
}

/// The tags by their keys; nothing unless they are an array of strings.
std::optional<QHash<QString, QString>> tagsOf(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(value.toString().toUtf8());
    if (!document.isArray())
        return std::nullopt;
    QHash<QString, QString> tags;
    for (const QJsonValueConstRef tag : document.array()) {
        if (!tag.isString())
            return std::nullopt;
        const QString text = tag.toString();
        if (const qsizetype colon = text.indexOf(u':'); colon >= 0)
            tags.insert(text.first(colon), text.sliced(colon + 1));
    }
    return tags;
}

std::optional<Todo> todoOf(const QJsonObject &row)
{
    const auto id = integerOf(row["id"_L1]);
    const auto tags = tagsOf(row["tags"_L1]);
    if (!id || !tags || tags->value(u"status"_s, u"open"_s) != "open"_L1)
        return std::nullopt;
    Todo todo;
    todo.id = *id;
    readBody(row["body"_L1].toString(), todo);
    todo.title = row["name"_L1].toString();
    todo.due = tags->value(u"due"_s, todo.due);
    todo.who = tags->value(u"who"_s, todo.who);
    todo.project = tags->value(u"project"_s, todo.project);
    todo.scope = tags->value(u"scope"_s, todo.scope);
    todo.prio = decimalOf(tags->value(u"prio"_s)).value_or(todo.prio);
    return todo;
}

QStringList options(const Todo &todo)
{
    return {
        "--title="_L1 + todo.title,     "--body="_L1 + todo.details, "--due="_L1 + todo.due,        "--who="_L1 + todo.who,
        "--project="_L1 + todo.project, "--scope="_L1 + todo.scope,  u"--prio=%1"_s.arg(todo.prio),
    };
}

} // namespace

TodoTool::TodoTool(const QString &home)
    : database(home + "/src/quillbox/quillbox.db"_L1)
    , todoScript(home + "/src/quillbox/todo/todo.py"_L1)
{
}

QStringList TodoTool::add(const Todo &todo) const
{
    return QStringList{u"python3"_s, todoScript, u"add"_s} + options(todo);
}

QStringList TodoTool::edit(const Todo &todo) const
{
    return QStringList{u"python3"_s, todoScript, u"edit"_s, QString::number(todo.id)} + options(todo);
}

QStringList TodoTool::done(qint64 id) const
{
    return {u"python3"_s, todoScript, u"done"_s, QString::number(id)};
}

QStringList TodoTool::comment(qint64 id, const QString &text) const
{
    return {u"python3"_s, todoScript, u"comment"_s, QString::number(id), text};
}

bool TodoTool::patched(const Files &files) const
{
    const auto script = files.read(todoScript, kLongestScript);
    const auto *bytes = std::get_if<QByteArray>(&script);
    if (!bytes)
        return false;
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(*bytes);
    return !utf8.hasError() && text.contains("def comment("_L1);
}

namespace {

std::optional<QList<Todo>> todosOf(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    const QJsonArray rows = document.array();
    // Not std::ranges, which doesn't accept newer Qt's iterators.
    if (!document.isArray() || !std::all_of(rows.begin(), rows.end(), [](const QJsonValue &row) { return row.isObject(); }))
        return std::nullopt;
    QList<Todo> todos;
    for (const QJsonValueConstRef row : rows) {
        if (auto todo = todoOf(row.toObject()))
            todos.append(*std::move(todo));
    }
    return todos;
}

} // namespace

QList<Todo> parseTodos(const QByteArray &json)
{
    return todosOf(json).value_or(QList<Todo>());
}

LocalReading loadTodos(ToolRunner &tools, const QString &database)
{
    const RunResult result =
        tools.run({u"sqlite3"_s, u"-readonly"_s, u"-json"_s, database,
                   u"SELECT id, name, body, tags FROM quillbox_memory WHERE type='todo' AND archived_at IS NULL"_s},
                  {}, kTimeout);
    if (auto todos = todosOf(result.out))
        return {std::move(todos), {}};
    // The tool prints nothing for an empty table.
    if ((result.ok && result.out.trimmed().isEmpty()) || !QFileInfo::exists(database))
        return {QList<Todo>(), {}};
    return {std::nullopt, lastLine(result.err)};
}

} // namespace velto
