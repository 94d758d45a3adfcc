#include "Tabs/Todos/TodoJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

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
    return value.isDouble() && value.toInteger(1) == field; // for a fraction both calls return their fallback
}

/// What is left of an object without the keys that were read.
QJsonObject without(QJsonObject object, std::initializer_list<QLatin1StringView> known)
{
    if (object.size() == qsizetype(known.size()))
        return {};
    for (const QLatin1StringView key : known)
        object.remove(key);
    return object;
}

bool take(const QJsonObject &object, QLatin1StringView key, QList<Comment> &field)
{
    const QJsonValue value = object[key];
    for (const QJsonValueConstRef entry : value.toArray()) {
        const QJsonObject comment = entry.toObject();
        if (!take(comment, "at"_L1, field.emplaceBack().at) || !take(comment, "text"_L1, field.back().text))
            return false;
        field.back().unknown = without(comment, {"at"_L1, "text"_L1});
    }
    return value.isArray();
}

/// Where the object that begins at `from` ends; nothing if it doesn't. Its contents aren't checked.
std::optional<qsizetype> endOfObject(QByteArrayView json, qsizetype from)
{
    bool inText = false;
    for (qsizetype at = from, depth = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (inText && c == '\\')
            ++at;
        else if (c == '"')
            inText = !inText;
        else if (!inText && (c == '{' || c == '['))
            ++depth;
        else if (!inText && (c == '}' || c == ']') && --depth == 0)
            return at + 1;
    }
    return std::nullopt;
}

/// Passes on the objects of an array, in order, until `take` returns false. False too if it isn't such an array.
template <typename Take> bool eachObject(QByteArrayView json, Take take)
{
    qsizetype at = json.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    const auto next = [&] {
        while (at < json.size() && (json[at] == ' ' || json[at] == '\t' || json[at] == '\n' || json[at] == '\r'))
            ++at;
        return at < json.size() ? json[at] : '\0';
    };
    if (next() != '[')
        return false;
    ++at;
    for (bool first = true; !first || next() != ']'; first = false) {
        const auto end = next() == '{' ? endOfObject(json, at) : std::nullopt;
        if (!end || !take(json.sliced(at, *end - at)))
            return false;
        at = *end;
        if (next() == ']')
            break;
        if (next() != ',')
            return false;
        ++at;
    }
    ++at;
    return next() == '\0' && at == json.size();
}

/// Gives each todo an id of its own: rows and changes go by it.
void makeDistinct(QList<Todo> &todos)
{
    QSet<qint64> taken{0}; // the id of a draft
    taken.reserve(todos.size() + 1);
    QList<qsizetype> again;
    for (qsizetype place = 0; place < todos.size(); ++place) {
        if (taken.contains(todos.at(place).id))
            again.append(place);
        taken.insert(todos.at(place).id);
    }
    qint64 next = 0;
    for (const qsizetype place : again) {
        do
            ++next;
        while (taken.contains(next));
        taken.insert(next);
        todos[place].id = next;
    }
}

/// A string with its quotation marks, as JSON writes it.
void put(QByteArray &json, const QString &text)
{
    if (!text.isValidUtf16()) { // a lone surrogate, which JSON can hold only as an escape
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

/// What follows the known keys of an object.
void put(QByteArray &json, const QJsonObject &unknown)
{
    if (unknown.isEmpty())
        return;
    const QByteArray object = QJsonDocument(unknown).toJson(QJsonDocument::Compact);
    (json += ',').append(object.constData() + 1, object.size() - 2);
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
        put(json, comment.unknown);
        json += '}';
    }
    json += ']';
    put(json, todo.unknown);
    json += '}';
}

} // namespace

// Written by hand, since it runs at each change: the toolkit takes six times as long.
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
    QList<Todo> todos;
    QSet<QString> shared; // many todos have these texts in common
    const auto share = [&shared](QString &text) { text = *shared.insert(text); };
    // One object at a time: a document for all of it takes many times the list's memory, and leaves the heap fragmented.
    const bool whole = eachObject(json, [&](QByteArrayView slice) {
        const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromRawData(slice.data(), slice.size()));
        const QJsonObject object = document.object();
        Todo &todo = todos.emplaceBack();
        if (!document.isObject() || !take(object, "id"_L1, todo.id) || !take(object, "title"_L1, todo.title)
            || !take(object, "details"_L1, todo.details) || !take(object, "due"_L1, todo.due) || !take(object, "who"_L1, todo.who)
            || !take(object, "project"_L1, todo.project) || !take(object, "scope"_L1, todo.scope)
            || !take(object, "prio"_L1, todo.prio) || !take(object, "comments"_L1, todo.comments))
            return false;
        for (QString *text : {&todo.due, &todo.who, &todo.project, &todo.scope})
            share(*text);
        todo.unknown = without(
            object, {"id"_L1, "title"_L1, "details"_L1, "due"_L1, "who"_L1, "project"_L1, "scope"_L1, "prio"_L1, "comments"_L1});
        return true;
    });
    if (!whole)
        return std::nullopt;
    makeDistinct(todos);
    return todos;
}

} // namespace velto
