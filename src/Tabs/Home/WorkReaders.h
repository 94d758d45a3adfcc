#pragma once

#include "Core/Http.h"
#include "Tabs/Home/WorkItem.h"

#include <QDateTime>
#include <QJsonValue>

namespace velto {

/// Where the work tools are. A Jira site is whatever the user typed; `jira` stands in its place if it isn't empty.
struct WorkEndpoints {
    QUrl linear = QUrl(QStringLiteral("https://api.linear.app/graphql"));
    QUrl slack = QUrl(QStringLiteral("https://slack.com/api/"));
    QUrl jira = {};
};

// Each reader throws WorkError with a phrase that goes behind the tool's name. They ask for 20 items at most. UI thread.

/// Sends a request whose answer is to be JSON.
QCoro::Task<QJsonValue> fetchJSON(Http &http, HttpRequest request);

/// The open issues assigned to the user. Linear's API allows 1,500 requests an hour for each user.
/// https://developers.linear.app/docs/graphql/working-with-the-graphql-api
QCoro::Task<QList<WorkItem>> linearIssues(Http &http, QUrl endpoint, QString token);

/// The open issues assigned to the user, the latest change first. Jira Cloud limits by a cost that a single search stays far
/// below. https://developer.atlassian.com/cloud/jira/platform/rest/v3/api-group-issue-search/
QCoro::Task<QList<WorkItem>> jiraIssues(Http &http, QUrl standIn, QString site, QString email, QString token);

/// Messages of the last 24 hours that mention the user. search.messages allows 20 requests a minute and needs a user token
/// with search:read. https://api.slack.com/methods/search.messages, https://api.slack.com/methods/auth.test
QCoro::Task<QList<WorkItem>> slackMentions(Http &http, QUrl endpoint, QString token, std::function<QDateTime()> now);

} // namespace velto
