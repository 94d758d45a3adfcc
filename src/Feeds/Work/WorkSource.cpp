#include "Feeds/Work/WorkSource.h"

#include "Core/Abandoned.h"
#include "Core/GuardedGit.h"
#include "Core/Prefs.h"
#include "Core/Words.h"
#include "Core/WorkError.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/Keychain.h"
#include "Platform/ToolRunner.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kInterval{300};
constexpr std::chrono::seconds kGhLimit{30};
constexpr int kLongestError = 120;

std::optional<QList<WorkItem>> parsePRs(const QByteArray &output)
{
    const QJsonDocument document = QJsonDocument::fromJson(output);
    if (!document.isArray())
        return std::nullopt;
    QList<WorkItem> items;
    for (const auto &each : document.array()) {
        if (!each.isObject())
            return std::nullopt;
        const QJsonObject object = each.toObject();
        const QJsonValue url = object.value("url"_L1);
        if (!url.isString())
            continue;
        QStringList words{object.value("repository"_L1).toObject().value("name"_L1).toString(),
                          object.value("title"_L1).toString()};
        words.removeAll(QString());
        items.append({url.toString(), words.join(u": "_s), addressIn(url)});
    }
    return items;
}

} // namespace

PullRequests loadPRs(ToolRunner &tools)
{
    const PullRequests signedOut{{}, Words::tr("The GitHub CLI isn't signed in. Run `gh auth login`.")};
    if (!tools.mayBeSignedIn(u"gh"_s))
        return signedOut;
    const RunResult result = tools.run({u"gh"_s, u"search"_s, u"prs"_s, u"--review-requested=@me"_s, u"--state=open"_s,
                                        u"--json"_s, u"title,url,repository"_s, u"--limit"_s, u"20"_s},
                                       {}, kGhLimit, guardedGit());
    if (result.ok) {
        if (const auto items = parsePRs(result.out))
            return {*items, std::nullopt};
    }
    if (result.err.contains("auth"_L1))
        return signedOut;
    return {{}, Words::tr("Couldn't ask GitHub: %1").arg(firstCharacters(result.err, kLongestError))};
}

WorkSource::WorkSource(Needs needs, QObject *parent)
    : QObject(parent)
    , m_needs(std::move(needs))
    , m_keychain(m_needs.background, m_needs.keychain)
{
    connect(&m_needs.keychain, &Keychain::lockedChanged, this, &WorkSource::keyringChanged);
}

WorkSource::~WorkSource()
{
    m_life.reset();
}

// The interval starts with the request, however that ends.
bool WorkSource::due(Group group, bool force)
{
    const Instant now = m_needs.clock.now();
    const auto last = m_last.constFind(group);
    if (!force && last != m_last.cend() && now - *last < kInterval)
        return false;
    m_last.insert(group, now);
    return true;
}

void WorkSource::refresh(bool force)
{
    if (m_needs.prefs.isOn(Prefs::Module::Prs) && due(Group::Prs, force))
        readPullRequests();
    if (m_needs.prefs.isOn(Prefs::Module::Work) && due(Group::Work, force))
        readWork();
}

void WorkSource::unlock()
{
    m_needs.keychain.unlock();
}

void WorkSource::keyringChanged()
{
    if (!m_needs.keychain.locked() && m_needs.prefs.isOn(Prefs::Module::Work))
        readWork();
}

void WorkSource::readPullRequests()
{
    if (!m_needs.tools.toolInstalled(u"gh"_s)) {
        Published next = m_now;
        next.prState =
            SourceState::unavailable(tr("The GitHub CLI isn't installed."), tr("Run `brew install gh`, then `gh auth login`."));
        publish(std::move(next));
        return;
    }
    if (m_askingGitHub) {
        m_askGitHubAgain = true;
        return;
    }
    m_askingGitHub = true;
    inBackground(
        m_needs.background, this, [&tools = m_needs.tools] { return loadPRs(tools); },
        [this](const PullRequests &read) {
            m_askingGitHub = false;
            if (std::exchange(m_askGitHubAgain, false))
                readPullRequests();
            Published next = m_now;
            next.prs = read.items;
            next.prState = read.error ? SourceState::failed(*read.error) : SourceState::ready();
            publish(std::move(next));
        });
}

QCoro::Task<> WorkSource::readWork()
{
    const std::weak_ptr life = m_life;
    const WorkServices services{m_needs.http, m_needs.background, m_needs.endpoints};
    Found found;
    // A tool that fails loses its earlier items; those of the others are fresh.
    const auto failed = [&found](const QString &tool, const WorkError &error) {
        found.errors.append(u"%1: %2."_s.arg(tool, error.errorDescription));
    };
    try {
        const std::optional<QString> linear = co_await m_keychain.get(u"Velto.linear"_s);
        stillWanted(life);
        const std::optional<QString> jira = co_await m_keychain.get(u"Velto.jira"_s);
        stillWanted(life);
        const std::optional<QString> slack = co_await m_keychain.get(u"Velto.slack"_s);
        stillWanted(life);
        if (!linear && !jira && !slack) {
            Published next = m_now;
            next.issues.clear();
            next.mentions.clear();
            next.workState = m_needs.keychain.locked()
                ? SourceState::locked(tr("The keyring is locked."), tr("Unlock it to see your issues and mentions."))
                : SourceState::unavailable(tr("No work tools connected."),
                                           tr("Connect Linear, Jira or Slack in the Connect tab."));
            publish(std::move(next));
            co_return;
        }
        if (linear) {
            try {
                found.issues += co_await linearIssues(services, *linear);
            } catch (const WorkError &error) {
                failed(u"Linear"_s, error);
            }
            stillWanted(life);
        }
        if (jira) {
            try {
                found.issues += co_await jiraIssues(services, m_needs.prefs.jiraSite(), m_needs.prefs.jiraEmail(), *jira);
            } catch (const WorkError &error) {
                failed(u"Jira"_s, error);
            }
            stillWanted(life);
        }
        if (slack) {
            try {
                found.mentions = co_await slackMentions(services, *slack, [&clock = m_needs.clock] { return clock.wallTime(); });
            } catch (const WorkError &error) {
                failed(u"Slack"_s, error);
            }
            stillWanted(life);
        }
    } catch (const Abandoned &) {
        co_return;
    }
    Published next = m_now;
    next.issues = found.issues;
    next.mentions = found.mentions;
    next.workState = found.errors.isEmpty() ? SourceState::ready() : SourceState::failed(found.errors.join(u' '));
    publish(std::move(next));
}

void WorkSource::publish(Published next)
{
    if (next == m_now)
        return;
    m_now = std::move(next);
    Q_EMIT changed();
}

} // namespace velto
