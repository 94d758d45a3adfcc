#pragma once

#include "HttpStandIn.h"
#include "Platform/Posix/ThreadPoolBackground.h"
#include "Tabs/Home/WorkReaders.h"

#include <QTest>
#include <optional>

namespace velto {

/// Linear, Jira and Slack as services with TLS on this machine: what they are asked, and what becomes of their answers.
class WorkReadersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void repliesBecomeItems();
    void theQuestionsAreExact();
    void eachRefusalHasItsPhrase_data();
    void eachRefusalHasItsPhrase();
    void whatIsNoAnswerIsAPhrase_data();
    void whatIsNoAnswerIsAPhrase();
    void otherShapesAreEmpty_data();
    void otherShapesAreEmpty();
    void slackSaysWhatIsWrong_data();
    void slackSaysWhatIsWrong();
    void linesAreCutAsPeopleCount();
    void aJiraSiteIsReadAsTyped_data();
    void aJiraSiteIsReadAsTyped();

private:
    enum class Tool : quint8 { Linear, Jira, Slack };
    static constexpr Tool kTools[] = {Tool::Linear, Tool::Jira, Tool::Slack};
    struct Outcome {
        QList<WorkItem> items;
        QString phrase; ///< empty if nothing went wrong
    };

    /// The answer of a service that works.
    static HttpStandIn::Answer working(const HttpStandIn::Request &request);
    WorkServices services();
    Outcome read(Tool tool, const QString &site = QStringLiteral("acme.atlassian.net"));

    HttpStandIn m_service{HttpStandIn::Security::Tls};
    ThreadPoolBackground m_background;
    std::optional<Http> m_http;
};

} // namespace velto
