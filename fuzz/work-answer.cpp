// Any bytes as the answers of Linear, Jira and Slack: items are read or a word says why not; their titles are short, their ids
// belong to their service, and their addresses are some.

#include "Core/WorkError.h"
#include "FakeHttp.h"
#include "Feeds/Work/WorkReaders.h"
#include "Platform/Fake/InlineBackground.h"

#include <QDateTime>
#include <cstdlib>
#include <qcoro/qcorotask.h>

using namespace Qt::StringLiterals;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What a reader makes of it. All answers are there at once, so that nothing waits.
QCoro::Task<> check(QCoro::Task<QList<velto::WorkItem>> reader, QString service)
{
    try {
        const QList<velto::WorkItem> items = co_await reader;
        for (const velto::WorkItem &item : items) {
            require(item.id.startsWith(service + u'-') && !item.title.isEmpty());
            require(!item.url || (item.url->isValid() && !item.url->isEmpty()));
        }
    } catch (const velto::WorkError &error) {
        require(!error.errorDescription.endsWith(u'.'));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const char *data, std::size_t size)
{
    const QByteArray bytes(data, qsizetype(size));
    velto::FakeHttp http;
    velto::InlineBackground background;
    const velto::WorkServices services{http, background};
    http.answer = [&bytes](const velto::HttpRequest &request) {
        const bool who = request.url.path().endsWith("auth.test"_L1);
        return velto::HttpReply{200, who ? R"({"ok":true,"user_id":"U1"})"_ba : bytes};
    };
    check(velto::linearIssues(services, u"token"_s), u"linear"_s);
    check(velto::jiraIssues(services, u"team.example"_s, u"me@team.example"_s, u"token"_s), u"jira"_s);
    const auto now = [] { return QDateTime::fromMSecsSinceEpoch(1'795'226'514'492, Qt::UTC); };
    check(velto::slackMentions(services, u"token"_s, now), u"slack"_s);
    require(velto::firstCharacters(QString::fromUtf8(bytes), 80).size() <= 80 * 40);
    return 0;
}
