#pragma once

#include "Core/RowModel.h"
#include "Feeds/Calendar/GoogleAccount.h"
#include "Feeds/Calendar/GoogleMeeting.h"
#include "Feeds/Calendar/MeetingFeed.h"

#include <QObject>
#include <memory>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Clock;
class Http;
class Keychain;
class Prefs;
class SignInListener;
class Workspace;

/// What is read through the user's Google account: the calendars and the meetings of the coming day.
/// UI thread only; never blocks. A failure ends in error(), with calendars() and meetings() left as they were.
/// Of several loads under way at once the last one to finish wins.
class GoogleCalendar : public MeetingFeed {
    Q_OBJECT
    /// The last failure, in words; empty when all is well.
    Q_PROPERTY(QString error READ errorText NOTIFY changed FINAL)
    Q_PROPERTY(bool connecting READ connecting NOTIFY changed FINAL)
    Q_PROPERTY(bool linked READ linked NOTIFY changed FINAL)
    Q_PROPERTY(bool configured READ configured CONSTANT FINAL)
    /// The calendars to choose from: "id", "summary", "chosen".
    Q_PROPERTY(QAbstractItemModel *calendars READ calendarRows CONSTANT FINAL)
    Q_PROPERTY(bool hasCalendars READ hasCalendars NOTIFY changed FINAL)
public:
    /// What it uses; all of it outlives it.
    struct Needs {
        Clock &clock;
        Background &background;
        Http &http;
        Keychain &keychain;
        Workspace &workspace;
        Prefs &prefs;
        GoogleClient client = GoogleClient::ofThisBuild();
        GoogleEndpoints endpoints = {};
    };
    explicit GoogleCalendar(Needs needs, QObject *parent = nullptr);
    /// Ends what is under way.
    ~GoogleCalendar() override;

    const QList<GoogleCalendarInfo> &calendars() const { return m_state.calendars; }
    /// Meetings that were not over when they were read, by start time.
    const QList<GoogleMeeting> &meetings() const override { return m_state.meetings; }
    bool answered() const override { return m_state.answered; }
    std::optional<QString> error() const override { return m_state.error; }
    bool locked() const override { return m_state.locked; }
    void unlock() override;
    /// The calendars to choose from: the account's, and those chosen that it no longer has.
    QList<GoogleCalendarInfo> choices() const;
    /// A sign-in is under way, until its first load is done. It has no time limit: the user may take any time in the browser.
    bool connecting() const { return m_state.connecting; }
    /// Whether the keychain held tokens at the last lookup; before the first one, whether the user chose Google.
    bool linked() const override { return m_state.linked; }
    bool configured() const { return m_account.configured(); }

    QString errorText() const { return m_state.error.value_or(QString()); }
    QAbstractItemModel *calendarRows() { return &m_calendarRows; }
    bool hasCalendars() const { return !m_state.calendars.isEmpty(); }

    // These two hide QObject's functions of the same names, which nobody needs on this object.
    /// Starts the sign-in in the user's browser. Callers don't start another one while connecting().
    Q_INVOKABLE void connect();
    /// Gives up the sign-in that waits for the browser.
    Q_INVOKABLE void cancelConnecting();
    /// Forgets the account and returns to meetings that the user adds.
    Q_INVOKABLE void disconnect();
    /// Reads calendars and meetings again if there are tokens; returns at once.
    Q_INVOKABLE void refresh() override;
    /// Shows or leaves out the meetings of one calendar from now on.
    Q_INVOKABLE void choose(const QString &calendarID, bool chosen);

private:
    /// What others see, kept to detect whether anything has changed.
    struct State {
        QList<GoogleCalendarInfo> calendars = {};
        QList<GoogleMeeting> meetings = {};
        std::optional<QString> error = {};
        bool connecting = false;
        bool linked = false;
        bool answered = false;
        bool locked = false;

        bool operator==(const State &) const = default;
    };

    QCoro::Task<> connectTask();
    QCoro::Task<> refreshTask();
    QCoro::Task<> lookTask();
    QCoro::Task<> load(std::optional<GoogleTokens> tokens);

    QStringList calendarsToRead();
    void forgetOtherAccounts();
    void prefsChanged();
    void publish();
    void updateRows();

    Needs m_needs;
    bool m_usesGoogle; ///< the user's choice as it was seen last
    State m_state;
    State m_published;
    RowModel m_calendarRows;
    GoogleAccount m_account;
    GoogleAccount::Life m_life = std::make_shared<bool>(true); ///< ends with this object
};

} // namespace velto
