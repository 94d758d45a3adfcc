#include "Desk.h"
#include "Feeds/Calendar/SignInListener.h"
#include "RunTests.h"
#include "Warnings.h"

#include <QJsonDocument>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace velto {

/// From the button to the first meetings.
class SignInTest : public QObject {
    Q_OBJECT
private:
    static constexpr auto kThanks = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nContent-Length: 53\r\n\r\n"
                                    "Google Calendar is connected. You can close this tab.";

    /// From the button to the end, successful or not.
    static bool signIn(Desk &desk)
    {
        desk.calendar->connect();
        Browser browser(desk);
        browser.say(Browser::back(desk));
        return desk.until([&] { return !desk.calendar->connecting(); });
    }

private Q_SLOTS:
    void aWholeSignInEndsWithMeetings()
    {
        Desk desk;
        Warnings::start();
        desk.calendar->connect();
        QVERIFY(desk.calendar->connecting());
        QStringList names;
        for (const auto &[name, value] : QUrlQuery(desk.authorization()).queryItems())
            names.append(name);
        QCOMPARE(names.join(u' '),
                 QStringLiteral("client_id redirect_uri response_type scope access_type prompt code_challenge "
                                "code_challenge_method state"));
        QCOMPARE(desk.sent("client_id"), u"id.example"_s);
        QCOMPARE(desk.sent("scope"), u"https://www.googleapis.com/auth/calendar.readonly"_s);
        QVERIFY(
            QRegularExpression(u"^http://127\\.0\\.0\\.1:\\d+/oauth2callback$"_s).match(desk.sent("redirect_uri")).hasMatch());
        QVERIFY(QRegularExpression(u"^[0-9A-F]{64}$"_s).match(desk.sent("state")).hasMatch());
        QVERIFY(unguessable() != unguessable());
        // RFC 7636, appendix B.
        QCOMPARE(codeChallenge(u"dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk"_s),
                 u"E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"_s);

        Browser browser(desk);
        const QByteArray cookies = "Cookie: a=" + QByteArray(30'000, 'x') + "\r\n\r\n"; // browsers have a lot to say
        browser.say(Browser::back(desk).replace("\r\n\r\n", "\r\n" + cookies));
        QVERIFY(desk.until([&] { return !desk.calendar->connecting(); }));
        QVERIFY(desk.until([&] { return browser.socket.state() == QTcpSocket::UnconnectedState; }));
        QCOMPARE(browser.heard, QByteArray(kThanks));

        const HttpStandIn::Request exchange = desk.google.requests.value(0);
        QCOMPARE(exchange.method + ' ' + exchange.target, QByteArray("POST /token"));
        QCOMPARE(exchange.headers.value("content-type"), QByteArray("application/x-www-form-urlencoded"));
        QMap<QString, QString> form;
        for (const QByteArray &pair : exchange.body.split('&'))
            form.insert(QString::fromLatin1(pair.split('=').value(0)), QUrl::fromPercentEncoding(pair.split('=').value(1)));
        QCOMPARE(form.take(u"client_id"_s), u"id.example"_s);
        QCOMPARE(form.take(u"client_secret"_s), u"s&+=ü"_s);
        QCOMPARE(form.take(u"code"_s), u"4/0Abc-d_e"_s);
        QCOMPARE(codeChallenge(form.take(u"code_verifier"_s)), desk.sent("code_challenge"));
        QCOMPARE(form.take(u"redirect_uri"_s), desk.sent("redirect_uri"));
        QCOMPARE(form.take(u"grant_type"_s), u"authorization_code"_s);
        QVERIFY(form.isEmpty());

        QCOMPARE(desk.google.requests.value(1).headers.value("authorization"), QByteArray("Bearer ya29.fresh"));
        const QJsonObject record =
            QJsonDocument::fromJson(desk.keychain.get(GoogleAccount::tokenKey).value_or(QString()).toUtf8()).object();
        const QJsonObject expected{{u"accessToken"_s, u"ya29.fresh"_s},
                                   {u"refreshToken"_s, u"1//fresh"_s},
                                   {u"expiresAt"_s, 816'944'400.0 + 3599}}; // since 2001
        QCOMPARE(record, expected);
        QCOMPARE(desk.prefs.calendarSource(), Prefs::CalendarSource::Google);
        QVERIFY(desk.calendar->linked());
        QVERIFY(!desk.calendar->error());
        QCOMPARE(desk.calendar->meetings().size(), 2);
        QCOMPARE(Warnings::stop(), QStringList());
    }

    void strangersGetNoAnswer()
    {
        Desk desk;
        desk.calendar->connect();
        const QByteArray good = Browser::back(desk);
        const QByteArray wrongState = QByteArray(good).replace(good.indexOf("state=") + 6, 1, "x");
        std::list<Browser> strangers;
        for (const QByteArray &request :
             {QByteArray("GET /favicon.ico HTTP/1.1\r\n\r\n"), wrongState, good.toLower(),
              QByteArray(good).replace("&code", "&edoc"), QByteArray("GET\r\n\r\n"), QByteArray("\r\n"),
              QByteArray("\xff\xfe ") + good, QByteArray(8192, 'x') + ' ' + good, "POST / HTTP/1.1\n" + good}) {
            strangers.emplace_back(desk);
            strangers.back().say(request);
        }
        // Each connection gets one read only.
        Browser late(desk);
        late.say("GET / HTTP/1.1\r\n\r\n");
        QTest::qWait(50);
        late.say(good);
        QTest::qWait(50);
        strangers.emplace_back(desk);
        QVERIFY(desk.google.requests.isEmpty());
        for (const Browser &stranger : strangers) {
            QCOMPARE(stranger.heard, QByteArray());
            QCOMPARE(stranger.socket.state(), QTcpSocket::ConnectedState);
        }

        Browser browser(desk);
        browser.say(good);
        Browser second(desk);
        second.say(good);
        QVERIFY(desk.until([&] { return !desk.calendar->connecting(); }));
        QVERIFY(desk.until([&] { return browser.heard == kThanks; }));
        QCOMPARE(second.heard, QByteArray());
        QCOMPARE(std::ranges::count(desk.google.requests, "/token", &HttpStandIn::Request::target), 1);
    }

    void aCrowdOfStrangersDoesNotShutOutTheBrowser()
    {
        Desk desk;
        desk.calendar->connect();
        std::list<Browser> crowd;
        for (int i = 0; i < 100; ++i)
            crowd.emplace_back(desk);
        const auto inside = [&crowd] {
            return std::ranges::count(crowd, QTcpSocket::ConnectedState, [](const Browser &b) { return b.socket.state(); });
        };
        QVERIFY(desk.until([&] { return inside() <= 33; }));
        Browser browser(desk);
        browser.say(Browser::back(desk));
        QVERIFY(desk.until([&] { return !desk.calendar->connecting(); }));
        QVERIFY(!desk.calendar->error());
    }

    void canBeGivenUpHereAndInTheBrowser()
    {
        Desk desk;
        desk.calendar->connect();
        desk.calendar->cancelConnecting();
        QVERIFY(!desk.calendar->connecting());
        QVERIFY(!desk.calendar->error());
        desk.calendar->connect();
        Browser browser(desk);
        browser.say(Browser::back(desk).replace("&code=", "&error=access_denied&x="));
        QVERIFY(desk.until([&] { return !desk.calendar->connecting(); }));
        QCOMPARE(desk.calendar->error(), std::optional(u"Google sign-in was declined in the browser"_s));
        QVERIFY(desk.until([&] { return browser.heard.endsWith("Google Calendar isn't connected. You can close this tab."); }));
        QVERIFY(desk.google.requests.isEmpty());
    }

    void anotherAccountHasItsOwnCalendars()
    {
        Desk desk;
        desk.prefs.setGoogleCalendarIDs({u"old@example.com"_s});
        QVERIFY(signIn(desk));
        QVERIFY(!desk.calendar->error());
        QVERIFY(!desk.prefs.googleCalendarIDs().contains(u"old@example.com"_s));
        QVERIFY(!desk.prefs.googleCalendarIDs().isEmpty());
        desk.prefs.setGoogleCalendarIDs({u"gone@example.com"_s}); // one that went later can be left out
        QCOMPARE(desk.calendar->choices().last().id, u"gone@example.com"_s);
        desk.calendar->disconnect();
        QVERIFY(desk.prefs.googleCalendarIDs().isEmpty());
    }

    void aKeyringThatIsLockedOrFullSaysSo()
    {
        Desk desk;
        desk.link();
        desk.keychain.setLocked(true);
        desk.calendar = desk.make(); // Velto starts again
        QVERIFY(desk.refresh());
        QVERIFY(desk.calendar->linked() && desk.calendar->locked() && !desk.calendar->answered());
        desk.calendar->unlock();
        QCOMPARE(desk.keychain.unlocked, 1);
        desk.keychain.setLocked(false);
        QVERIFY(desk.settle());
        QVERIFY(!desk.calendar->locked() && desk.calendar->answered());
        QCOMPARE(desk.calendar->meetings().size(), 2);

        desk.keychain.keeps = false;
        QVERIFY(signIn(desk));
        QCOMPARE(desk.calendar->error(), std::optional(u"The keyring couldn't keep the sign-in"_s));
    }

    void aFailedExchangeSaysWhyAndKeepsTheOldTokens()
    {
        const auto row = [](int status, const QByteArray &body, const char *error) {
            Desk desk;
            desk.link();
            desk.prefs.setCalendarSource(Prefs::CalendarSource::Manual);
            const QHash<QString, QString> before = desk.keychain.entries;
            desk.token = {status, body};
            QVERIFY(signIn(desk));
            QCOMPARE(desk.calendar->errorText(), QLatin1String(error));
            QCOMPARE(desk.keychain.entries, before);
            QCOMPARE(desk.prefs.calendarSource(), Prefs::CalendarSource::Manual);
            QCOMPARE(desk.google.requests.size(), 1);
        };
        row(400, R"({"error": "invalid_grant", "error_description": "Bad Request"})", "Google sign-in failed");
        row(204, "", "Google sign-in failed");
        row(503, "<html>", "Google sign-in failed");
        row(200, "", "the answer can't be read: illegal value");
        row(200, "<html>", "a web page came in place of an answer");
        row(200, "[]", "Google sign-in failed");
        for (const char *incomplete :
             {R"({"access_token": "a", "expires_in": 3599})", R"({"refresh_token": "a"})",
              R"({"access_token": 1, "refresh_token": "a"})", R"({"access_token": "a", "refresh_token": null})",
              R"({"access_token": "a\r\nX: y", "refresh_token": "a"})"})
            row(200, incomplete, "Google did not return a refresh token");
        row(200, QByteArray(2'000'000, ' '), "The answer was too large.");

        Desk desk;
        desk.list = {403, "{}"}; // what fails afterwards leaves the user signed in
        QVERIFY(signIn(desk));
        QCOMPARE(desk.calendar->errorText(), u"Google Calendar could not be refreshed"_s);
        QVERIFY(desk.kept());
        QCOMPARE(desk.prefs.calendarSource(), Prefs::CalendarSource::Google);
    }

    void aBuildWithoutAClientSaysSo()
    {
        Desk desk;
        for (const GoogleClient &client : {GoogleClient{}, GoogleClient{u"a"_s, {}}, GoogleClient{{}, u"b"_s}}) {
            desk.calendar = desk.make(client);
            QVERIFY(!desk.calendar->configured());
            desk.calendar->connect();
            QVERIFY(!desk.calendar->connecting());
            QCOMPARE(desk.calendar->errorText(),
                     QStringLiteral("Google OAuth is not configured in this build. Set GOOGLE_CLIENT_ID "
                                    "and GOOGLE_CLIENT_SECRET when packaging."));
        }
        QVERIFY(desk.workspace.opened.isEmpty());
    }

    /// Nothing may leak, or be used after it is gone, when the program ends halfway: the sanitizers check that.
    void anEndInTheMiddleEndsEverything()
    {
        Desk waiting;
        waiting.calendar->connect();
        waiting.calendar.reset();
        Browser nobody(waiting);
        QCOMPARE(nobody.socket.state(), QTcpSocket::UnconnectedState);

        Desk exchanging;
        exchanging.token.manner = HttpStandIn::Manner::Silent;
        exchanging.calendar->connect();
        Browser browser(exchanging);
        browser.say(Browser::back(exchanging));
        QVERIFY(exchanging.until([&] { return exchanging.google.requests.size() == 1; }));
        exchanging.calendar.reset();
        QVERIFY(!exchanging.kept());

        Desk reading;
        reading.link();
        reading.calendar->refresh();
        QVERIFY(reading.background.pending() > 0);
        reading.calendar.reset();
        reading.background.finishAll();
        QVERIFY(reading.google.requests.isEmpty());
    }
};

const Registered<SignInTest> registered;

} // namespace velto

#include "SignInTest.moc"
