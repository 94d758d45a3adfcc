#pragma once

#include "Fixture.h"
#include "HttpStandIn.h"
#include "RunTests.h"
#include "StoreDesk.h"

#include "Core/Http.h"
#include "Feeds/Calendar/GoogleCalendar.h"

#include <QSignalSpy>
#include <QTcpSocket>
#include <QUrlQuery>

namespace velto {

/// Knows when no request is under way any more.
class WatchedHttp final : public Http {
public:
    using Http::Http;

    int underWay() const { return *m_underWay; }
    QCoro::Task<HttpReply> send(HttpRequest request) override
    {
        const auto underWay = m_underWay; // this object may be gone at the end
        ++*underWay;
        HttpReply reply = co_await Http::send(std::move(request));
        --*underWay;
        co_return reply;
    }

private:
    std::shared_ptr<int> m_underWay = std::make_shared<int>(0);
};

/// A user with an account, at nine in the morning, UTC. Google is a stand-in over TLS that issues tokens and has the fixtures'
/// calendars and meetings, unless a test says otherwise.
struct Desk : StoreDesk {
    using Answer = HttpStandIn::Answer;

    Answer token{200, R"({"access_token": "ya29.fresh", "expires_in": 3599, "refresh_token": "1//fresh",
        "scope": "https://www.googleapis.com/auth/calendar.readonly", "token_type": "Bearer"})"};
    Answer list{200, fixture("google/calendar-list.json")};
    Answer events{200, fixture("google/events.json")};

    HttpStandIn google{HttpStandIn::Security::Tls};
    WatchedHttp http{google.trust()};
    std::unique_ptr<GoogleCalendar> calendar = make();
    QSignalSpy changes{calendar.get(), &GoogleCalendar::changed};

    Desk()
        : StoreDesk(QDateTime(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC))
    {
        google.answer = [this](const HttpStandIn::Request &request) {
            if (request.target == "/token")
                return token;
            return request.target.endsWith("/calendarList") ? list : events;
        };
    }

    std::unique_ptr<GoogleCalendar> make(const GoogleClient &client = {QStringLiteral("id.example"), QStringLiteral("s&+=ü")})
    {
        return std::make_unique<GoogleCalendar>(
            GoogleCalendar::Needs{clock,
                                  background,
                                  http,
                                  keychain,
                                  workspace,
                                  prefs,
                                  client,
                                  {google.url(QStringLiteral("/o/oauth2/v2/auth")), google.url(QStringLiteral("/token")),
                                   google.url(QStringLiteral("/calendar/v3"))}});
    }
    /// Puts tokens into the keychain that are valid for so many seconds.
    void link(int seconds = 3000, const QString &access = QStringLiteral("ya29.kept"))
    {
        const GoogleTokens tokens{access, QStringLiteral("1//kept"), clock.wallTime().addSecs(seconds)};
        keychain.put(GoogleAccount::tokenKey, tokens.toJson());
        prefs.setCalendarSource(Prefs::CalendarSource::Google);
    }
    std::optional<GoogleTokens> kept() const
    {
        return GoogleTokens::fromJson(keychain.get(GoogleAccount::tokenKey).value_or(QString()));
    }
    /// Runs the network and the keychain until the condition holds; false if it doesn't within five seconds. It checks after
    /// each event: QTest::qWaitFor sleeps in between, ten times in one request.
    template <typename Condition> bool until(Condition condition)
    {
        bool late = false;
        QTimer limit;
        QObject::connect(&limit, &QTimer::timeout, &limit, [&late] { late = true; });
        limit.start(std::chrono::seconds(5));
        for (background.finishAll(); !condition() && !late; background.finishAll())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return !late;
    }
    /// Waits until nothing is under way.
    bool settle()
    {
        return until([this] { return http.underWay() == 0 && background.pending() == 0; });
    }
    bool refresh()
    {
        calendar->refresh();
        return settle();
    }
    /// The page that the user's browser was sent to last.
    QUrl authorization() const { return workspace.opened.value(workspace.opened.size() - 1); }
    QString sent(const char *item) const
    {
        return QUrlQuery(authorization()).queryItemValue(QLatin1String(item), QUrl::FullyDecoded);
    }
};

/// A connection to the sign-in's port.
struct Browser {
    QTcpSocket socket;
    QByteArray heard;

    explicit Browser(const Desk &desk)
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] { heard += socket.readAll(); });
        socket.connectToHost(QHostAddress::LocalHost, quint16(QUrl(desk.sent("redirect_uri")).port()));
        (void)QTest::qWaitFor([this] { return socket.state() != QTcpSocket::ConnectingState; });
    }
    void say(const QByteArray &request) { socket.write(request); }
    static QByteArray back(const Desk &desk, const QByteArray &code = "4%2F0Abc-d_e")
    {
        return "GET /oauth2callback?state=" + desk.sent("state").toLatin1() + "&code=" + code
            + "&scope=https://www.googleapis.com/auth/calendar.readonly HTTP/1.1\r\nHost: 127.0.0.1\r\nAccept: */*\r\n\r\n";
    }
};

} // namespace velto
