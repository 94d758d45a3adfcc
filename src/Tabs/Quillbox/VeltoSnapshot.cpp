#include "Tabs/Quillbox/VeltoSnapshot.h"

#include <QCoreApplication>
#include <cmath>
#include <rapidjson/document.h>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

// Qt's own JSON sorts the keys of an object, and the order of the counts matters.
using JsonValue = rapidjson::Value;

QString text(const JsonValue &value)
{
    return QString::fromUtf8(value.GetString(), qsizetype(value.GetStringLength()));
}

/// 3.0 is an integer too.
std::optional<qint64> integer(const JsonValue &value)
{
    if (value.IsInt64())
        return value.GetInt64();
    constexpr double kExact = 9007199254740992;
    if (!value.IsDouble() || std::abs(value.GetDouble()) > kExact || std::trunc(value.GetDouble()) != value.GetDouble())
        return {};
    return qint64(value.GetDouble());
}

QString kindOf(const JsonValue &value)
{
    switch (value.GetType()) {
    case rapidjson::kNullType:
        return u"null"_s;
    case rapidjson::kFalseType:
    case rapidjson::kTrueType:
        return QCoreApplication::translate("VeltoSnapshot", "true or false");
    case rapidjson::kObjectType:
        return QCoreApplication::translate("VeltoSnapshot", "an object");
    case rapidjson::kArrayType:
        return QCoreApplication::translate("VeltoSnapshot", "a list");
    case rapidjson::kStringType:
        return QCoreApplication::translate("VeltoSnapshot", "text");
    case rapidjson::kNumberType:
        break;
    }
    return QCoreApplication::translate("VeltoSnapshot", "a number");
}

/// Reads the keys of one object. The first fault of the whole document is the one reported.
class Reader {
public:
    Reader(const JsonValue &value, const QString &path, QString &fault)
        : m_value(value)
        , m_path(path)
        , m_fault(fault)
    {
        if (!value.IsObject())
            wrong(path, value, QCoreApplication::translate("VeltoSnapshot", "an object"));
    }

    void read(const char *key, qint64 &into) const
    {
        if (const JsonValue *value = required(key))
            take(pathOf(key), *value, into);
    }
    void read(const char *key, QString &into) const
    {
        if (const JsonValue *value = required(key))
            take(pathOf(key), *value, into);
    }
    void read(const char *key, std::optional<QString> &into) const
    {
        if (const JsonValue *value = find(key); value && !value->IsNull())
            take(pathOf(key), *value, into.emplace());
    }
    template <typename Record> void read(const char *key, std::optional<Record> &into) const
    {
        if (const JsonValue *value = find(key); value && !value->IsNull())
            fill(Reader(*value, pathOf(key), m_fault), into.emplace(Record{}));
    }
    template <typename Record> void read(const char *key, QList<Record> &into) const
    {
        const JsonValue *list = required(key);
        if (!list)
            return;
        if (!list->IsArray())
            return wrong(pathOf(key), *list, QCoreApplication::translate("VeltoSnapshot", "a list"));
        into.reserve(qsizetype(list->Size()));
        for (const JsonValue &value : list->GetArray()) {
            if (!m_fault.isEmpty())
                return;
            const QString path = u"%1[%2]"_s.arg(pathOf(key)).arg(into.size());
            fill(Reader(value, path, m_fault), into.emplaceBack());
        }
    }
    void read(const char *key, QList<std::pair<QString, qint64>> &into) const
    {
        const JsonValue *counts = required(key);
        if (!counts)
            return;
        if (!counts->IsObject())
            return wrong(pathOf(key), *counts, QCoreApplication::translate("VeltoSnapshot", "an object"));
        for (const auto &[name, count] : counts->GetObject())
            take(pathOf(key) + ".*"_L1, count, into.emplaceBack(text(name), 0).second);
    }

private:
    QString pathOf(const char *key) const
    {
        return m_path.isEmpty() ? QLatin1StringView(key) : m_path + u'.' + QLatin1StringView(key);
    }
    const JsonValue *find(const char *key) const
    {
        if (!m_fault.isEmpty())
            return nullptr;
        const auto found = m_value.FindMember(key);
        return found == m_value.MemberEnd() ? nullptr : &found->value;
    }
    const JsonValue *required(const char *key) const
    {
        const JsonValue *value = find(key);
        if (!value && m_fault.isEmpty())
            m_fault = QCoreApplication::translate("VeltoSnapshot", "\"%1\" is missing").arg(pathOf(key));
        return value;
    }
    void take(const QString &path, const JsonValue &value, qint64 &into) const
    {
        if (const std::optional<qint64> number = integer(value))
            into = *number;
        else
            wrong(path, value, QCoreApplication::translate("VeltoSnapshot", "an integer"));
    }
    void take(const QString &path, const JsonValue &value, QString &into) const
    {
        if (value.IsString())
            into = text(value);
        else
            wrong(path, value, QCoreApplication::translate("VeltoSnapshot", "text"));
    }
    void wrong(const QString &path, const JsonValue &value, const QString &wanted) const
    {
        if (!m_fault.isEmpty())
            return;
        m_fault = path.isEmpty()
            ? QCoreApplication::translate("VeltoSnapshot", "The document should be %1 and is %2").arg(wanted, kindOf(value))
            : QCoreApplication::translate("VeltoSnapshot", "\"%1\" should be %2 and is %3").arg(path, wanted, kindOf(value));
    }

    static void fill(const Reader &from, VeltoSnapshot::HubTodo &todo)
    {
        from.read("id", todo.id);
        from.read("title", todo.title);
        from.read("body", todo.body);
        from.read("due", todo.due);
        from.read("who", todo.who);
        from.read("project", todo.project);
        from.read("scope", todo.scope);
        from.read("prio", todo.prio);
    }
    static void fill(const Reader &from, VeltoSnapshot::Handoff &handoff)
    {
        from.read("id", handoff.id);
        from.read("name", handoff.name);
        from.read("topic", handoff.topic);
        from.read("device", handoff.device);
        from.read("at", handoff.at);
    }
    static void fill(const Reader &from, VeltoSnapshot::Heard &heard)
    {
        from.read("id", heard.id);
        from.read("name", heard.name);
        from.read("at", heard.at);
    }
    static void fill(const Reader &from, VeltoSnapshot::Gap &gap)
    {
        from.read("id", gap.id);
        from.read("area", gap.area);
        from.read("question", gap.question);
        from.read("grip", gap.grip);
    }

    const JsonValue &m_value;
    QString m_path;
    QString &m_fault;
};

} // namespace

Result<VeltoSnapshot, QString> VeltoSnapshot::decode(const QByteArray &json)
{
    // Without recursion: even a million levels of nesting are an ordinary fault.
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    rapidjson::Document document;
    document.Parse<kFlags>(json.constData(), std::size_t(json.size()));
    if (document.HasParseError())
        return QCoreApplication::translate("VeltoSnapshot", "It is no JSON from byte %1 on").arg(document.GetErrorOffset());
    QString fault;
    VeltoSnapshot result;
    const Reader reader(document, {}, fault);
    reader.read("todos", result.todos);
    reader.read("handoffs", result.handoffs);
    reader.read("heard", result.heard);
    reader.read("gap", result.gap);
    reader.read("written_today", result.writtenToday);
    if (!fault.isEmpty())
        return fault;
    return result;
}

} // namespace velto
