#include "Feeds/Calendar/GoogleCalendar.h"

#include "Core/Abandoned.h"
#include "Core/Prefs.h"
#include "Core/Result.h"
#include "Core/WorkError.h"
#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/Keychain.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Reads an answer in the background, since it may be of any length. To be awaited.
template <typename Read> auto reading(Background &background, Read read)
{
    using Value = std::invoke_result_t<Read>;
    return inBackground(background, [read = std::move(read)]() -> Result<Value, QString> {
        try {
            return read();
        } catch (const WorkError &error) {
            return error.errorDescription;
        }
    });
}

template <typename Value> Value valueOf(Result<Value, QString> result)
{
    if (!result)
        throw WorkError{result.error()};
    return *std::move(result);
}

} // namespace

GoogleCalendar::GoogleCalendar(Needs needs, QObject *parent)
    : MeetingFeed(parent)
    , m_needs(std::move(needs))
    , m_usesGoogle(m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google)
    , m_state{.linked = m_usesGoogle}
    , m_published(m_state)
    , m_calendarRows({"id", "summary", "chosen"})
    , m_account({m_needs.clock, m_needs.background, m_needs.http, m_needs.keychain, m_needs.workspace, m_needs.client,
                 m_needs.endpoints},
                m_usesGoogle)
{
    QObject::connect(&m_account, &GoogleAccount::linkedChanged, this, [this] {
        m_state.linked = m_account.linked();
        m_state.locked = m_account.locked();
        publish();
    });
    QObject::connect(&m_needs.prefs, &Prefs::changed, this, &GoogleCalendar::prefsChanged);
    QObject::connect(&m_needs.keychain, &Keychain::lockedChanged, this, [this] {
        if (!m_needs.keychain.locked() && m_usesGoogle)
            refresh();
    });
}

GoogleCalendar::~GoogleCalendar()
{
    m_life.reset(); // the account ends the requests under way
}

void GoogleCalendar::connect()
{
    if (!configured()) {
        m_state.error = tr("Google OAuth is not configured in this build. Set GOOGLE_CLIENT_ID and GOOGLE_CLIENT_SECRET when "
                           "packaging.");
        publish();
        return;
    }
    m_state.connecting = true;
    m_state.error.reset();
    publish();
    connectTask();
}

QCoro::Task<> GoogleCalendar::connectTask()
{
    const std::weak_ptr life = m_life;
    std::optional<QString> failure;
    try {
        const GoogleTokens fresh = co_await m_account.signIn();
        stillWanted(life);
        const std::weak_ptr link = m_account.link();
        const bool kept = co_await m_account.save(fresh);
        stillWanted(link);
        if (!kept)
            throw WorkError{tr("The keyring couldn't keep the sign-in")};
        m_needs.prefs.setCalendarSource(Prefs::CalendarSource::Google);
        const std::optional<GoogleTokens> tokens = co_await m_account.load();
        stillWanted(link);
        co_await load(tokens);
    } catch (const Abandoned &) {
        // The account was forgotten meanwhile, or this object is gone.
    } catch (const WorkError &error) {
        failure = error.errorDescription;
    }
    if (life.expired())
        co_return;
    m_state.connecting = false;
    if (failure) {
        m_state.error = failure;
        m_state.answered = m_state.linked;
    }
    publish();
}

void GoogleCalendar::cancelConnecting()
{
    m_account.cancelSignIn();
}

QCoro::Task<> GoogleCalendar::lookTask()
{
    try {
        co_await m_account.load();
    } catch (const Abandoned &) {
    }
}

void GoogleCalendar::disconnect()
{
    m_state.calendars.clear();
    m_state.meetings.clear();
    m_state.error.reset();
    m_state.linked = false;
    m_state.answered = false;
    m_state.locked = false;
    m_published = m_state;
    m_account.forget();
    m_needs.prefs.setGoogleCalendarIDs({}); // they belong to the account
    updateRows();
    if (m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google)
        m_needs.prefs.setCalendarSource(Prefs::CalendarSource::Manual);
    Q_EMIT changed();
}

void GoogleCalendar::refresh()
{
    refreshTask();
}

QCoro::Task<> GoogleCalendar::refreshTask()
{
    const std::weak_ptr link = m_account.link();
    std::optional<QString> failure;
    try {
        const std::optional<GoogleTokens> tokens = co_await m_account.load();
        stillWanted(link);
        if (!tokens)
            co_return;
        co_await load(tokens);
    } catch (const Abandoned &) {
        co_return;
    } catch (const WorkError &error) {
        failure = error.errorDescription;
    }
    if (link.expired() || !failure)
        co_return;
    m_state.error = failure;
    m_state.answered = true;
    publish();
}

QCoro::Task<> GoogleCalendar::load(std::optional<GoogleTokens> tokens)
{
    const std::weak_ptr link = m_account.link();
    const QString token = co_await m_account.accessToken(tokens);
    stillWanted(link);
    const QByteArray list = co_await calendarGet(m_needs.http, calendarListUrl(m_needs.endpoints), token);
    stillWanted(link);
    auto readingList = reading(m_needs.background, [list] { return parseCalendars(list); });
    auto calendars = co_await readingList;
    stillWanted(link);
    m_state.calendars = valueOf(std::move(calendars));
    if (m_state.connecting)
        forgetOtherAccounts();
    publish();

    const QStringList ids = calendarsToRead();
    QList<GoogleMeeting> meetings;
    for (const QString &id : ids) {
        const QUrl url = eventsUrl(m_needs.endpoints, id, m_needs.clock.wallTime());
        const QByteArray events = co_await calendarGet(m_needs.http, url, token);
        stillWanted(link);
        auto readingEvents = reading(m_needs.background, [events, id] { return parseMeetings(events, id); });
        auto found = co_await readingEvents;
        stillWanted(link);
        meetings += valueOf(std::move(found));
    }
    const QDateTime now = m_needs.clock.wallTime();
    meetings.removeIf([&now](const GoogleMeeting &meeting) { return meeting.end <= now; });
    std::ranges::stable_sort(meetings, {}, &GoogleMeeting::start);
    m_state.meetings = meetings;
    m_state.error.reset();
    m_state.answered = true;
    publish();
}

/// The calendars of a previously connected account would only give errors.
void GoogleCalendar::forgetOtherAccounts()
{
    const QStringList &chosen = m_needs.prefs.googleCalendarIDs();
    QStringList ours = chosen;
    ours.removeIf([this](const QString &id) { return !std::ranges::count(m_state.calendars, id, &GoogleCalendarInfo::id); });
    if (ours != chosen)
        m_needs.prefs.setGoogleCalendarIDs(ours);
}

QStringList GoogleCalendar::calendarsToRead()
{
    const QList<GoogleCalendarInfo> &calendars = m_state.calendars;
    const auto primary = std::ranges::find(calendars, std::optional(true), &GoogleCalendarInfo::primary);
    if (m_needs.prefs.googleCalendarIDs().isEmpty() && primary != calendars.end())
        m_needs.prefs.setGoogleCalendarIDs({primary->id});
    QStringList chosen = m_needs.prefs.googleCalendarIDs();
    if (!chosen.isEmpty() || calendars.isEmpty())
        return chosen;
    return {calendars.front().id};
}

void GoogleCalendar::choose(const QString &calendarID, bool chosen)
{
    QStringList ids = m_needs.prefs.googleCalendarIDs();
    if (ids.contains(calendarID) == chosen)
        return;
    if (chosen)
        ids.append(calendarID);
    else
        ids.removeAll(calendarID);
    m_needs.prefs.setGoogleCalendarIDs(ids);
    refresh();
}

QList<GoogleCalendarInfo> GoogleCalendar::choices() const
{
    QList<GoogleCalendarInfo> all = m_state.calendars;
    const QStringList &chosen = m_needs.prefs.googleCalendarIDs();
    for (const QString &id : chosen) {
        if (!all.isEmpty() && !std::ranges::count(all, id, &GoogleCalendarInfo::id))
            all.append({id, id, std::nullopt});
    }
    return all;
}

void GoogleCalendar::unlock()
{
    m_account.unlock();
}

void GoogleCalendar::prefsChanged()
{
    updateRows();
    const bool used = std::exchange(m_usesGoogle, m_needs.prefs.calendarSource() == Prefs::CalendarSource::Google);
    if (!used && m_usesGoogle)
        lookTask();
}

void GoogleCalendar::publish()
{
    if (m_state == m_published)
        return;
    m_published = m_state;
    updateRows();
    Q_EMIT changed();
}

void GoogleCalendar::updateRows()
{
    const QStringList &chosen = m_needs.prefs.googleCalendarIDs();
    QList<RowModel::Row> rows;
    const QList<GoogleCalendarInfo> all = choices();
    for (const GoogleCalendarInfo &calendar : all)
        rows.append({calendar.id, calendar.summary, chosen.contains(calendar.id)});
    m_calendarRows.setRows(rows);
}

} // namespace velto
