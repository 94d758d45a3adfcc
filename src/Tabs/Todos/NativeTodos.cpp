#include "Tabs/Todos/NativeTodos.h"

#include "Platform/Clock.h"
#include "Platform/Files.h"
#include "Platform/Places.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargestFile = 256 * 1024 * 1024;

bool take(const QJsonObject &object, QLatin1StringView key, QString &field)
{
    const QJsonValue value = object[key];
    field = value.toString();
    return value.isString();
}

bool take(const QJsonObject &object, QLatin1StringView key, qint64 &field)
{
    const QJsonValue value = object[key];
    field = value.toInteger(0);
    return value.isDouble() && value.toInteger(1) == field; // a fraction gives both defaults
}

bool take(const QJsonObject &object, QLatin1StringView key, QList<Comment> &field)
{
    const QJsonValue value = object[key];
    for (const QJsonValueConstRef entry : value.toArray()) {
        const QJsonObject comment = entry.toObject();
        if (!take(comment, "at"_L1, field.emplaceBack().at) || !take(comment, "text"_L1, field.back().text))
            return false;
    }
    return value.isArray();
}

/// A text in quotes, as JSON has it.
void put(QByteArray &json, const QString &text)
{
    if (!text.isValidUtf16()) { // half a character, which only an escape can hold
        const QByteArray list = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        json += list.sliced(1, list.size() - 2);
        return;
    }
    json += '"';
    const QByteArray bytes = text.toUtf8();
    const char *written = bytes.cbegin();
    for (const char *at = written; at != bytes.cend(); ++at) {
        if (uchar(*at) >= 0x20 && *at != '"' && *at != '\\')
            continue;
        json.append(written, at - written);
        written = at + 1;
        if (uchar(*at) < 0x20)
            json += "\\u00" + QByteArray::number(*at, 16).rightJustified(2, '0');
        else
            (json += '\\') += *at;
    }
    json.append(written, bytes.cend() - written) += '"';
}

void put(QByteArray &json, const char *key, const QString &text)
{
    json += key;
    put(json, text);
}

void put(QByteArray &json, const Todo &todo)
{
    json += "{\"id\":" + QByteArray::number(todo.id);
    put(json, ",\"title\":", todo.title);
    put(json, ",\"details\":", todo.details);
    put(json, ",\"due\":", todo.due);
    put(json, ",\"who\":", todo.who);
    put(json, ",\"project\":", todo.project);
    put(json, ",\"scope\":", todo.scope);
    json += ",\"prio\":" + QByteArray::number(todo.prio) + ",\"comments\":[";
    for (const Comment &comment : todo.comments) {
        json += json.endsWith('[') ? "{" : ",{";
        put(json, "\"at\":", comment.at);
        put(json, ",\"text\":", comment.text);
        json += '}';
    }
    json += "]}";
}

} // namespace

// By hand, since it is done at each change while the user waits: the toolkit takes six times as long.
QByteArray encodeTodos(const QList<Todo> &todos)
{
    QByteArray json = "[";
    for (const Todo &todo : todos) {
        if (json.size() > 1)
            json += ',';
        put(json, todo);
    }
    return json += ']';
}

std::optional<QList<Todo>> decodeTodos(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isArray())
        return std::nullopt;
    QList<Todo> todos;
    for (const QJsonValueConstRef entry : document.array()) {
        const QJsonObject object = entry.toObject();
        Todo &todo = todos.emplaceBack();
        if (!take(object, "id"_L1, todo.id) || !take(object, "title"_L1, todo.title) || !take(object, "details"_L1, todo.details)
            || !take(object, "due"_L1, todo.due) || !take(object, "who"_L1, todo.who) || !take(object, "project"_L1, todo.project)
            || !take(object, "scope"_L1, todo.scope) || !take(object, "prio"_L1, todo.prio)
            || !take(object, "comments"_L1, todo.comments))
            return std::nullopt;
    }
    return todos;
}

NativeTodos::NativeTodos(Files &files, const Clock &clock, const Places &places)
    : m_files(files)
    , m_clock(clock)
    , m_path(places.data + "/todos.json"_L1)
{
}

QList<Todo> NativeTodos::load()
{
    const auto content = m_files.read(m_path, kLargestFile);
    const auto *bytes = std::get_if<QByteArray>(&content);
    const auto todos = bytes ? decodeTodos(*bytes) : std::nullopt;
    if (!todos)
        return {};
    m_known = *bytes;
    return *todos;
}

void NativeTodos::save(const QList<Todo> &todos)
{
    if (!keepForeign())
        return;
    const QByteArray bytes = encodeTodos(todos);
    if (!m_files.replace(m_path, bytes))
        m_known = bytes;
}

bool NativeTodos::keepForeign()
{
    const auto content = m_files.read(m_path, kLargestFile);
    if (const auto *error = std::get_if<FileError>(&content))
        return error->missing;
    const auto &bytes = std::get<QByteArray>(content);
    if (bytes == m_known || bytes.trimmed().isEmpty())
        return true;
    if (!keep(bytes))
        return false;
    m_known = bytes; // one copy does, also if the save fails and is tried again
    return true;
}

bool NativeTodos::keep(const QByteArray &bytes)
{
    constexpr int kAttempts = 100;
    const QString stamp = m_clock.wallTime().toUTC().toString(Qt::ISODate).replace(':'_L1, '-'_L1);
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        const QString suffix = attempt == 1 ? QString() : u"-%1"_s.arg(attempt);
        const QString copy = m_path + ".kept-"_L1 + stamp + suffix;
        const auto standing = m_files.read(copy, 0);
        const auto *error = std::get_if<FileError>(&standing);
        if (error && error->missing)
            return !m_files.replace(copy, bytes);
    }
    return false;
}

} // namespace velto
