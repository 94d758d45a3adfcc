#include "Feeds/Calendar/GoogleMeeting.h"

#include "Core/Http.h"
#include "Core/WorkError.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kUsualLength = 3600;

std::optional<QString> textIn(const QJsonObject &object, QLatin1StringView name)
{
    const QJsonValue value = object.value(name);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

/// The objects of a list; empty if it holds anything else.
QList<QJsonObject> objectsIn(const QJsonObject &object, QLatin1StringView name)
{
    const QJsonArray items = object.value(name).toArray();
    QList<QJsonObject> objects;
    for (const auto &item : items) {
        if (!item.isObject())
            return {};
        objects.append(item.toObject());
    }
    return objects;
}

QList<QJsonObject> itemsOf(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw WorkError{whyNoJson(json, error.errorString())};
    return objectsIn(document.object(), "items"_L1);
}

std::optional<QDateTime> dateTimeIn(const QJsonObject &event, QLatin1StringView name)
{
    const std::optional<QString> text = textIn(event.value(name).toObject(), "dateTime"_L1);
    return text ? internetDateTime(*text) : std::nullopt;
}

std::optional<QUrl> joinURLOf(const QJsonObject &event)
{
    const auto entries = objectsIn(event.value("conferenceData"_L1).toObject(), "entryPoints"_L1);
    const auto video = std::ranges::find_if(
        entries, [](const QJsonObject &entry) { return entry.value("entryPointType"_L1) == QJsonValue("video"_L1); });
    std::optional<QString> candidate;
    if (video != entries.end())
        candidate = textIn(*video, "uri"_L1);
    if (!candidate)
        candidate = textIn(event, "hangoutLink"_L1);
    const QUrl url(candidate.value_or(QString()), QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

} // namespace

QList<GoogleCalendarInfo> parseCalendars(const QByteArray &json)
{
    QList<GoogleCalendarInfo> calendars;
    for (const QJsonObject &item : itemsOf(json)) {
        const std::optional<QString> id = textIn(item, "id"_L1);
        const std::optional<QString> summary = textIn(item, "summary"_L1);
        const QJsonValue primary = item.value("primary"_L1);
        if (id && summary)
            calendars.append({*id, *summary, primary.isBool() ? std::optional(primary.toBool()) : std::nullopt});
    }
    return calendars;
}

QList<GoogleMeeting> parseMeetings(const QByteArray &json, const QString &calendarID)
{
    QList<GoogleMeeting> meetings;
    for (const QJsonObject &item : itemsOf(json)) {
        if (auto meeting = meetingOf(item, calendarID))
            meetings.append(*std::move(meeting));
    }
    return meetings;
}

std::optional<GoogleMeeting> meetingOf(const QJsonObject &event, const QString &calendarID)
{
    const std::optional<QString> id = textIn(event, "id"_L1);
    const std::optional<QDateTime> start = dateTimeIn(event, "start"_L1);
    if (!id || !start || event.value("status"_L1) == QJsonValue("cancelled"_L1))
        return std::nullopt;
    return GoogleMeeting{
        .id = *id,
        .title = textIn(event, "summary"_L1).value_or(QCoreApplication::translate("velto::GoogleCalendar", "Meeting")),
        .start = *start,
        .end = dateTimeIn(event, "end"_L1).value_or(start->addSecs(kUsualLength)),
        .joinURL = joinURLOf(event),
        .calendarID = calendarID,
    };
}

std::optional<QDateTime> internetDateTime(const QString &text)
{
    static const QRegularExpression form(
        u"\\A(\\d{4}-\\d{2}-\\d{2})[Tt](\\d{2}:\\d{2}):(\\d{2})(?:[Zz]|([+-])([01]\\d|2[0-3]):([0-5]\\d))\\z"_s);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QDate date = QDate::fromString(match.captured(1), Qt::ISODate);
    const QTime minute = QTime::fromString(match.captured(2), u"HH:mm"_s);
    const int second = match.captured(3).toInt();
    if (!date.isValid() || !minute.isValid() || second > 60) // 60 is a leap second
        return std::nullopt;
    const int offset = (match.captured(5).toInt() * 60 + match.captured(6).toInt()) * 60;
    return QDateTime(date, minute, Qt::UTC).addSecs(second - (match.captured(4) == "-"_L1 ? -offset : offset));
}

} // namespace velto
