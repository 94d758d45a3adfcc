#include "Tabs/Quillbox/QuillboxSource.h"

#include "Core/Peek.h"
#include "Core/Texts.h"
#include "Platform/Clock.h"
#include "Platform/Machine.h"
#include "Tabs/Quillbox/QuillboxClient.h"
#include "Tabs/Quillbox/SnapshotDate.h"

#include <QPointer>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kBetweenFetches{10};

QString nameOf(const VeltoSnapshot::Handoff &handoff)
{
    return QString(handoff.name).remove(u"Handoff · "_s);
}

QString nameOf(const VeltoSnapshot::Heard &heard)
{
    return QString(heard.name).remove(u"Tolver: "_s);
}

bool cameFrom(const VeltoSnapshot::Handoff &handoff, const QString &hostSlug)
{
    return handoff.device.value_or(QString()).contains(hostSlug);
}

SourceState notConnected()
{
    return SourceState::unavailable(QuillboxSource::tr("Quillbox isn't connected."),
                                    QuillboxSource::tr("It's optional — connect it in Settings to see your todos here."));
}

} // namespace

QuillboxSource::QuillboxSource(Needs needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(std::move(needs))
    , m_mode(m_needs.client.current())
    , m_rows({"rowId"_ba, "section"_ba, "symbol"_ba, "heard"_ba, "name"_ba, "age"_ba, "spoken"_ba})
    , m_otherMacRows({"rowId", "name", "age", "spoken"})
{
    publish();
}

QString QuillboxSource::title() const
{
    return tr("Quillbox");
}

QString QuillboxSource::symbol() const
{
    return u"brain"_s;
}

int QuillboxSource::badge() const
{
    return int(m_snapshot.heard.size()) + (m_snapshot.gap ? 1 : 0);
}

QUrl QuillboxSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Quillbox/QuillboxView.qml"_s);
}

QString QuillboxSource::savedToday() const
{
    auto counts = m_snapshot.writtenToday;
    std::ranges::stable_sort(counts, std::greater(), &std::pair<QString, qint64>::second);
    QStringList entries;
    for (const auto &[kind, count] : std::as_const(counts))
        entries.append(kind + u' ' + QString::number(count));
    return entries.isEmpty() ? QString() : tr("Saved today: %1").arg(entries.join(u", "_s));
}

QString QuillboxSource::cardArea() const
{
    return m_snapshot.gap ? m_snapshot.gap->area.value_or(QString()) : QString();
}

QString QuillboxSource::cardQuestion() const
{
    return m_snapshot.gap ? m_snapshot.gap->question : QString();
}

QString QuillboxSource::cardAnswer() const
{
    return m_snapshot.gap && m_showGrip ? m_snapshot.gap->grip.value_or(QString()) : QString();
}

bool QuillboxSource::offersAnswer() const
{
    return m_snapshot.gap && m_snapshot.gap->grip && cardAnswer().isEmpty();
}

QList<VeltoSnapshot::Handoff> QuillboxSource::otherMac() const
{
    const QString slug = hostSlug();
    QList<VeltoSnapshot::Handoff> result;
    std::ranges::copy_if(m_snapshot.handoffs, std::back_inserter(result),
                         [&slug](const auto &handoff) { return !cameFrom(handoff, slug); });
    return result;
}

void QuillboxSource::refresh()
{
    switch (m_mode.kind()) {
    case QuillboxMode::Kind::Local:
        m_state = SourceState::ready();
        break;
    case QuillboxMode::Kind::Missing:
        m_state = notConnected();
        break;
    case QuillboxMode::Kind::Hub:
        if (!m_fetching && (!m_lastFetch || m_needs.clock.now() - *m_lastFetch >= kBetweenFetches))
            fetch();
    }
    publish();
}

void QuillboxSource::fetchAgain()
{
    m_lastFetch.reset();
    refresh();
}

void QuillboxSource::reconnect()
{
    m_mode = m_needs.client.current();
    ++m_connection;
    m_fetching = false;
    m_seenHeard.reset();
    m_seenHandoffs.reset();
    m_lastFetch.reset();
    m_snapshot = {};
    m_state = m_mode.isMissing() ? notConnected() : SourceState::loading();
    Q_EMIT snapshotTaken();
    refresh();
}

void QuillboxSource::openAnswer()
{
    m_showGrip = true;
    publish();
}

QCoro::Task<> QuillboxSource::fetch()
{
    m_fetching = true;
    const QPointer<QuillboxSource> self(this);
    const int connection = m_connection;
    const Result<VeltoSnapshot, HubError> answer = co_await m_needs.client.snapshot();
    // The answer of a hub that Velto is no longer connected to.
    if (!self || connection != self->m_connection)
        co_return;
    self->take(answer);
}

void QuillboxSource::take(const Result<VeltoSnapshot, HubError> &answer)
{
    m_fetching = false;
    m_lastFetch = m_needs.clock.now();
    if (!answer) {
        m_state = SourceState::failed(answer.error().text);
        publish();
        return;
    }
    diff(*answer);
    m_snapshot = *answer;
    m_state = SourceState::ready();
    Q_EMIT snapshotTaken();
    publish();
}

void QuillboxSource::diff(const VeltoSnapshot &next)
{
    if (m_seenHeard)
        heardPeek(next);
    m_seenHeard.emplace();
    for (const VeltoSnapshot::Heard &heard : next.heard)
        m_seenHeard->insert(heard.id);
    if (m_seenHandoffs)
        handoffPeek(next);
    m_seenHandoffs.emplace();
    for (const VeltoSnapshot::Handoff &handoff : next.handoffs)
        m_seenHandoffs->insert(handoff.id, handoff.at);
}

void QuillboxSource::heardPeek(const VeltoSnapshot &next)
{
    const auto unheard = std::ranges::find_if(next.heard, [this](const auto &heard) { return !m_seenHeard->contains(heard.id); });
    if (unheard == next.heard.end())
        return;
    Peek peek;
    peek.symbol = u"ear"_s;
    peek.text = nameOf(*unheard);
    peek.tone = Peek::Tone::Warn;
    peek.tab = Tab::Quillbox;
    Q_EMIT peekWanted(peek);
}

void QuillboxSource::handoffPeek(const VeltoSnapshot &next)
{
    const auto isNews = [this, slug = hostSlug()](const VeltoSnapshot::Handoff &handoff) {
        const auto seen = m_seenHandoffs->constFind(handoff.id);
        return (seen == m_seenHandoffs->cend() || *seen != handoff.at) && !cameFrom(handoff, slug);
    };
    const auto news = std::ranges::find_if(next.handoffs, isNews);
    if (news == next.handoffs.end())
        return;
    Peek peek;
    peek.symbol = u"laptopcomputer"_s;
    peek.text = tr("Other Mac · %1").arg(nameOf(*news));
    peek.tone = Peek::Tone::Info;
    peek.tab = Tab::Agents;
    Q_EMIT peekWanted(peek);
}

void QuillboxSource::publish()
{
    const Published next{m_mode, m_snapshot, m_state, m_showGrip};
    const bool same = next == m_published;
    m_published = next;
    // The ages change even if nothing else does.
    publishRows();
    if (!same)
        Q_EMIT changed();
}

void QuillboxSource::publishRows()
{
    const auto spoken = [this](const QString &name, const QString &at) {
        const QString age = ageOf(at, timeAgo);
        return age.isEmpty() ? name : tr("%1, %2").arg(name, age);
    };
    const QString slug = hostSlug();
    QList<RowModel::Row> rows;
    QList<RowModel::Row> otherMac;
    for (const VeltoSnapshot::Handoff &handoff : std::as_const(m_snapshot.handoffs)) {
        const bool here = cameFrom(handoff, slug);
        const QString id = u"session "_s + QString::number(handoff.id);
        const QString name = nameOf(handoff);
        const QString words = (here ? tr("This Mac: %1") : tr("Other Mac: %1")).arg(spoken(name, handoff.at));
        rows.append({id, tr("Live sessions · last 6 hours"), here ? u"laptopcomputer"_s : u"laptopcomputer.and.arrow.down"_s,
                     false, name, ageOf(handoff.at, ago), words});
        if (!here)
            otherMac.append({id, name, tr("Handoff %1").arg(ageOf(handoff.at, timeAgo)).trimmed(), words});
    }
    for (const VeltoSnapshot::Heard &heard : std::as_const(m_snapshot.heard)) {
        const QString name = nameOf(heard);
        rows.append({u"heard "_s + QString::number(heard.id), tr("Heard by Tolver · last 24 hours"), u"ear"_s, true, name,
                     ageOf(heard.at, ago), spoken(name, heard.at)});
    }
    m_rows.setRows(rows);
    m_otherMacRows.setRows(otherMac);
}

QString QuillboxSource::hostSlug() const
{
    return m_needs.machine.displayName().toLower().replace(u' ', u'-').remove(u'’');
}

QString QuillboxSource::ageOf(const QString &at, QString (*words)(const QDateTime &, const QDateTime &)) const
{
    const std::optional<QDateTime> date = snapshotDate(at);
    return date ? words(*date, m_needs.clock.wallTime()) : QString();
}

} // namespace velto
