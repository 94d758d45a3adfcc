#include "Tabs/Todos/TodoJson.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <array>
#include <span>
#include <utility>

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

/// Where the value that begins at `from` ends: at a comma or at the bracket that closes what it is in. -1 if it doesn't end.
qsizetype endOfValue(QByteArrayView json, qsizetype from)
{
    bool inText = false;
    for (qsizetype at = from, depth = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (inText && c == '\\')
            ++at;
        else if (c == '"')
            inText = !inText;
        else if (inText)
            continue;
        else if (c == '{' || c == '[')
            ++depth;
        else if (depth == 0 && (c == ',' || c == '}' || c == ']'))
            return at;
        else if (c == '}' || c == ']')
            --depth;
    }
    return -1;
}

/// Passes on the elements of an array or the members of an object, as they are written, until `take` returns false. Their
/// contents aren't checked. False too if it isn't such a list, whole.
template <typename Take> bool each(QByteArrayView json, const char (&brackets)[3], Take take)
{
    json = json.trimmed();
    if (!json.startsWith(brackets[0]))
        return false;
    for (qsizetype at = 1;;) {
        const qsizetype end = endOfValue(json, at);
        if (end < 0)
            return false;
        const QByteArrayView part = json.sliced(at, end - at).trimmed();
        const bool empty = at == 1 && json[end] != ',' && part.isEmpty();
        if (!empty && !take(part))
            return false;
        at = end + 1;
        if (json[end] != ',')
            return json[end] == brackets[1] && at == json.size();
    }
}

/// The key of a member and its value.
std::pair<QString, QByteArrayView> split(QByteArrayView member)
{
    qsizetype end = 1;
    while (end < member.size() && member[end] != '"')
        end += member[end] == '\\' ? 2 : 1;
    const QByteArrayView key = member.sliced(1, std::min(end, member.size()) - 1);
    const QByteArrayView value = member.sliced(member.indexOf(':', end) + 1);
    if (!key.contains('\\'))
        return {QString::fromUtf8(key), value};
    return {QJsonDocument::fromJson("[\"" + key.toByteArray() + "\"]")[0].toString(), value};
}

/// What else stands in an object, as it stands there: numbers would lose digits in the toolkit's hands, and keys their order.
QByteArray unknownIn(QByteArrayView object, std::span<const QLatin1StringView> known)
{
    QByteArray unknown;
    each(object, "{}", [&](QByteArrayView member) {
        if (std::ranges::find(known, split(member).first) == known.end())
            (unknown += unknown.isEmpty() ? "" : ",").append(member.data(), member.size());
        return true;
    });
    return unknown;
}

/// Keeps what a todo and its comments have besides the known keys. `slice` is what `object` was read from.
void takeUnknown(QByteArrayView slice, const QJsonObject &object, Todo &todo)
{
    constexpr std::array kKnown{"id"_L1,      "title"_L1, "details"_L1, "due"_L1,     "who"_L1,
                                "project"_L1, "scope"_L1, "prio"_L1,    "comments"_L1};
    if (object.size() > qsizetype(kKnown.size()))
        todo.unknown = unknownIn(slice, kKnown);
    const QJsonArray comments = object["comments"_L1].toArray();
    constexpr std::array kKnownOfComment{"at"_L1, "text"_L1};
    if (std::ranges::none_of(comments, [](const QJsonValue &each) { return each.toObject().size() > 2; }))
        return;
    each(slice, "{}", [&](QByteArrayView member) {
        if (const auto [key, value] = split(member); key == "comments"_L1) {
            each(value, "[]", [&, at = 0](QByteArrayView comment) mutable {
                todo.comments[at++].unknown = unknownIn(comment, kKnownOfComment);
                return at < todo.comments.size();
            });
        }
        return true;
    });
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
void put(QByteArray &json, const QByteArray &unknown)
{
    if (!unknown.isEmpty())
        (json += ',') += unknown;
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
    const bool whole =
        each(QByteArrayView(json).sliced(json.startsWith("\xEF\xBB\xBF") ? 3 : 0), "[]", [&](QByteArrayView slice) {
            const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromRawData(slice.data(), slice.size()));
            const QJsonObject object = document.object();
            Todo &todo = todos.emplaceBack();
            if (!document.isObject() || !take(object, "id"_L1, todo.id) || !take(object, "title"_L1, todo.title)
                || !take(object, "details"_L1, todo.details) || !take(object, "due"_L1, todo.due)
                || !take(object, "who"_L1, todo.who) || !take(object, "project"_L1, todo.project)
                || !take(object, "scope"_L1, todo.scope) || !take(object, "prio"_L1, todo.prio)
                || !take(object, "comments"_L1, todo.comments))
                return false;
            for (QString *text : {&todo.due, &todo.who, &todo.project, &todo.scope})
                share(*text);
            takeUnknown(slice, object, todo);
            return true;
        });
    if (!whole)
        return std::nullopt;
    makeDistinct(todos);
    return todos;
}

} // namespace velto
