#include "Hooks/HookEvent.h"

#include "Core/Texts.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace velto {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMaxEventName = 63;
constexpr qsizetype kMaxMessage = 200;
constexpr qsizetype kMaxTool = 40;
constexpr qsizetype kMaxToolDetail = 80;

/// The first `count` UTF-16 units; one less where that would split a surrogate pair.
QString first(const QString &text, qsizetype count)
{
    if (text.size() > count && text.at(count - 1).isHighSurrogate() && text.at(count).isLowSurrogate())
        --count;
    return text.left(count);
}

std::optional<QString> text(const QJsonObject &object, QLatin1StringView key)
{
    const auto value = object.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<QString> text(const QJsonObject &object, QLatin1StringView key, qsizetype count)
{
    auto value = text(object, key);
    return value ? std::optional(first(*value, count)) : std::nullopt;
}

/// What the tool would touch or run, uncut; of a file, only its name.
std::optional<QString> detailOf(const QJsonObject &input)
{
    if (const auto path = text(input, "file_path"_L1))
        return lastPathComponent(*path);
    for (const auto key : {"command"_L1, "url"_L1, "pattern"_L1}) {
        if (auto detail = text(input, key))
            return detail;
    }
    return std::nullopt;
}

} // namespace

std::optional<HookEvent> HookEvent::parse(QByteArrayView body, const QDateTime &now)
{
    const auto document = QJsonDocument::fromJson(QByteArray::fromRawData(body.data(), body.size()));
    if (!document.isObject())
        return std::nullopt;
    const auto object = document.object();
    const auto name = text(object, "hook_event_name"_L1);
    if (!name || name->size() > kMaxEventName)
        return std::nullopt;

    HookEvent event;
    event.event = *name;
    event.sessionId = text(object, "session_id"_L1);
    if (event.sessionId && !isSessionId(*event.sessionId))
        event.sessionId.reset();
    event.cwd = text(object, "cwd"_L1);
    event.message = text(object, "message"_L1, kMaxMessage);
    event.notification = text(object, "notification_type"_L1, kMaxTool);
    event.tool = text(object, "tool_name"_L1, kMaxTool);
    event.wholeTool = object.value("tool_name"_L1).toString();
    event.toolInput = object.value("tool_input"_L1);
    const auto detail = detailOf(event.toolInput.toObject());
    if (detail)
        event.toolDetail = first(*detail, kMaxToolDetail).replace(u'\n', u' ');
    event.toolIsCut =
        event.tool.value_or(QString()).size() < event.wholeTool.size() || (detail && event.toolDetail->size() < detail->size());
    event.at = now;
    return event;
}

} // namespace velto
