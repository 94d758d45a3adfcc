#include "Feeds/Work/WorkReaders.h"

#include "Core/Result.h"
#include "Core/Words.h"
#include "Core/WorkError.h"
#include "Platform/Background.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QTextBoundaryFinder>
#include <QUrlQuery>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

std::optional<QUrl> addressIn(const QJsonValue &value)
{
    const QUrl url(value.toString(), QUrl::StrictMode);
    return value.isString() && url.isValid() && !url.isEmpty() ? std::optional(url) : std::nullopt;
}

QString firstCharacters(const QString &text, int count)
{
    // Enough code units for any character that the user would count as one.
    const QString beginning = text.left(qsizetype(count) * 40);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, beginning);
    for (int i = 0; i < count && finder.toNextBoundary() >= 0; ++i) { }
    return finder.position() < 0 ? beginning : beginning.left(finder.position());
}

namespace {

constexpr qint64 kLargestReply = 4 * 1024 * 1024;
constexpr int kDay = 86'400; // seconds
constexpr int kLongestMention = 80;

/// All members, if each is an object; empty otherwise.
QList<QJsonObject> objectsIn(const QJsonValue &value)
{
    QList<QJsonObject> objects;
    for (const auto &each : value.toArray()) {
        if (!each.isObject())
            return {};
        objects.append(each.toObject());
    }
    return objects;
}

/// The host of a site that may have been typed with a scheme and slashes.
QString bareSite(QString site)
{
    site.remove("https://"_L1, Qt::CaseInsensitive).remove("http://"_L1, Qt::CaseInsensitive);
    const auto isEdge = [](QChar c) { return c == u'/' || c == u' '; };
    while (!site.isEmpty() && isEdge(site.front()))
        site.remove(0, 1);
    while (!site.isEmpty() && isEdge(site.back()))
        site.chop(1);
    return site;
}

/// Some of the network layer's messages end with a full stop, and a service's may; a phrase is needed here.
QString withoutStop(QString sentence)
{
    while (sentence.endsWith(u'.') || sentence.endsWith(u' '))
        sentence.chop(1);
    return sentence;
}

Result<QJsonValue, QString> parsed(const QByteArray &body)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError)
        return whyNoJson(body, error.errorString());
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

QUrl jiraAddress(const QString &site, const QUrl &standIn)
{
    QUrl url(u"https://%1/rest/api/3/search/jql"_s.arg(site), QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty() || site.contains(u' '))
        throw WorkError{Words::tr("that Jira site address doesn't look right")};
    if (!standIn.isEmpty()) {
        url = standIn;
        url.setPath(u"/rest/api/3/search/jql"_s);
    }
    QUrlQuery query;
    const auto add = [&query](const QString &name, const char *value) {
        query.addQueryItem(name, QString::fromLatin1(QUrl::toPercentEncoding(QString::fromLatin1(value))));
    };
    add(u"jql"_s, "assignee = currentUser() AND statusCategory != Done ORDER BY updated DESC");
    add(u"fields"_s, "summary");
    add(u"maxResults"_s, "20");
    url.setQuery(query);
    return url;
}

QCoro::Task<QJsonObject> slackCall(WorkServices services, QString method, QUrlQuery items, QString token)
{
    QUrl url = services.endpoints.slack;
    url.setPath(url.path() + method);
    if (!items.isEmpty())
        url.setQuery(items);
    HttpRequest request{url, "GET", {{"Authorization", "Bearer " + token.toUtf8()}}};
    const QJsonValue reply = co_await fetchJSON(services, std::move(request));
    if (!reply.isObject())
        throw WorkError{Words::tr("unexpected reply")};
    const QJsonObject object = reply.toObject();
    if (object.value("ok"_L1) == QJsonValue(true))
        co_return object;
    const QString error = withoutStop(object.value("error"_L1).toString());
    throw WorkError{error.isEmpty() ? Words::tr("the token was refused") : error};
}

/// A number as people write it: no exponent, no "nan" or "inf", no blanks around it.
bool isDecimal(const QString &text)
{
    const auto belongs = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-'; };
    return !text.isEmpty() && std::ranges::all_of(text, belongs);
}

std::optional<WorkItem> mentionOf(const QJsonObject &match, double cutOff)
{
    const QString ts = match.value("ts"_L1).toString();
    bool ok = false;
    const double stamp = ts.toDouble(&ok);
    if (!ok || !isDecimal(ts) || stamp < cutOff)
        return std::nullopt;
    const QJsonValue name = match.value("channel"_L1).toObject().value("name"_L1);
    const QString channel = name.isString() ? name.toString() : u"DM"_s;
    const QString text = match.value("text"_L1).toString().replace(u'\n', u' ');
    QString number = QString::number(stamp, 'f', QLocale::FloatingPointShortest);
    if (!number.contains(u'.'))
        number += ".0"_L1;
    return WorkItem{u"slack-"_s + number, u"#%1: %2"_s.arg(channel, firstCharacters(text, kLongestMention)),
                    addressIn(match.value("permalink"_L1))};
}

} // namespace

QCoro::Task<QJsonValue> fetchJSON(WorkServices services, HttpRequest request)
{
    request.timeout = services.timeout;
    request.maximum = kLargestReply;
    const HttpReply reply = co_await services.http.send(std::move(request));
    if (!reply.status)
        throw WorkError{withoutStop(reply.fault)};
    if (*reply.status == 401 || *reply.status == 403)
        throw WorkError{Words::tr("the token was refused")};
    if (*reply.status < 200 || *reply.status > 299)
        throw WorkError{u"HTTP %1"_s.arg(*reply.status)};
    auto parsing = inBackground(services.background, [body = reply.body] { return parsed(body); });
    const Result<QJsonValue, QString> json = co_await parsing;
    if (!json)
        throw WorkError{withoutStop(json.error())};
    co_return *json;
}

QCoro::Task<QList<WorkItem>> linearIssues(WorkServices services, QString token)
{
    const QString query = u"{ viewer { assignedIssues(first: 20, filter: { state: { type: { nin: [\"completed\", "
                          "\"canceled\"] } } }) { nodes { identifier title url } } } }"_s;
    HttpRequest request{services.endpoints.linear,
                        "POST",
                        {{"Authorization", token.toUtf8()}, {"Content-Type", "application/json"}},
                        QJsonDocument(QJsonObject{{u"query"_s, query}}).toJson(QJsonDocument::Compact)};
    const QJsonValue reply = co_await fetchJSON(services, std::move(request));
    const QJsonObject viewer = reply.toObject().value("data"_L1).toObject().value("viewer"_L1).toObject();
    QList<WorkItem> items;
    for (const QJsonObject &node : objectsIn(viewer.value("assignedIssues"_L1).toObject().value("nodes"_L1))) {
        const QJsonValue identifier = node.value("identifier"_L1);
        if (identifier.isString())
            items.append({u"linear-"_s + identifier.toString(), identifier.toString() + u' ' + node.value("title"_L1).toString(),
                          addressIn(node.value("url"_L1))});
    }
    co_return items;
}

QCoro::Task<QList<WorkItem>> jiraIssues(WorkServices services, QString site, QString email, QString token)
{
    const QString host = bareSite(site);
    if (host.isEmpty() || email.isEmpty())
        throw WorkError{Words::tr("add your Jira site and email in Settings")};
    const QByteArray credentials = (email + u':' + token).toUtf8().toBase64();
    HttpRequest request{jiraAddress(host, services.endpoints.jira),
                        "GET",
                        {{"Authorization", "Basic " + credentials}, {"Accept", "application/json"}}};
    const QJsonValue reply = co_await fetchJSON(services, std::move(request));
    QList<WorkItem> items;
    for (const QJsonObject &issue : objectsIn(reply.toObject().value("issues"_L1))) {
        const QJsonValue key = issue.value("key"_L1);
        const QString summary = issue.value("fields"_L1).toObject().value("summary"_L1).toString();
        if (key.isString())
            items.append({u"jira-"_s + key.toString(), key.toString() + u' ' + summary,
                          addressIn(u"https://%1/browse/%2"_s.arg(host, key.toString()))});
    }
    co_return items;
}

QCoro::Task<QList<WorkItem>> slackMentions(WorkServices services, QString token, std::function<QDateTime()> now)
{
    const QJsonObject who = co_await slackCall(services, u"auth.test"_s, {}, token);
    const QJsonValue user = who.value("user_id"_L1);
    if (!user.isString())
        throw WorkError{Words::tr("couldn't find your user")};

    QUrlQuery items;
    items.addQueryItem(u"query"_s, QString::fromLatin1(QUrl::toPercentEncoding(u"<@%1>"_s.arg(user.toString()))));
    items.addQueryItem(u"sort"_s, u"timestamp"_s);
    items.addQueryItem(u"count"_s, u"20"_s);
    const QJsonObject found = co_await slackCall(services, u"search.messages"_s, items, token);
    const double cutOff = double(now().toMSecsSinceEpoch()) / 1000 - kDay;
    QList<WorkItem> mentions;
    for (const QJsonObject &match : objectsIn(found.value("messages"_L1).toObject().value("matches"_L1))) {
        if (const auto mention = mentionOf(match, cutOff))
            mentions.append(*mention);
    }
    co_return mentions;
}

} // namespace velto
