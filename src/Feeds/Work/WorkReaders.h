#pragma once

#include "Core/Http.h"
#include "Feeds/Work/WorkItem.h"

#include <QDateTime>
#include <QJsonValue>
#include <functional>

namespace velto {

class Background;

/// Where the work tools are. A Jira site is whatever the user typed; `jira` replaces it unless empty.
struct WorkEndpoints {
    QUrl linear = QUrl(QStringLiteral("https://api.linear.app/graphql"));
    QUrl slack = QUrl(QStringLiteral("https://slack.com/api/"));
    QUrl jira = {};
};

/// What the readers need; all of it outlives them.
struct WorkServices {
    Http &http;
    Background &background; ///< where answers are parsed, which may be long
    WorkEndpoints endpoints = {};
    std::chrono::milliseconds timeout = std::chrono::seconds(20);
};

// Each reader throws WorkError with a phrase that goes behind the tool's name: it begins in lower case and has no full stop.
// They ask for 20 items at most. UI thread.

/// Sends a request whose answer is to be JSON, of 4 MB at most.
QCoro::Task<QJsonValue> fetchJSON(WorkServices services, HttpRequest request);

/// The open issues assigned to the user. Linear's API allows 1,500 requests an hour for each user.
/// https://developers.linear.app/docs/graphql/working-with-the-graphql-api
QCoro::Task<QList<WorkItem>> linearIssues(WorkServices services, QString token);

/// The open issues assigned to the user, the latest change first. Jira Cloud limits by a cost that a single search stays far
/// below. https://developer.atlassian.com/cloud/jira/platform/rest/v3/api-group-issue-search/
QCoro::Task<QList<WorkItem>> jiraIssues(WorkServices services, QString site, QString email, QString token);

/// Messages of the last 24 hours that mention the user. search.messages allows 20 requests a minute and needs a user token
/// with search:read. https://api.slack.com/methods/search.messages, https://api.slack.com/methods/auth.test
QCoro::Task<QList<WorkItem>> slackMentions(WorkServices services, QString token, std::function<QDateTime()> now);

} // namespace velto
