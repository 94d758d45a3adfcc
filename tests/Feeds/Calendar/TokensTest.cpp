#include "Desk.h"
#include "RunTests.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace velto {

/// Tokens are renewed in time, stored in the keychain and forgotten for good.
class TokensTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void aTokenIsUsedWhileItHasMoreThanAMinute()
    {
        for (const auto &[life, renewals] : {std::pair{61, 0}, {60, 1}, {0, 1}, {-100'000, 1}}) {
            Desk desk;
            desk.link(life);
            QVERIFY(desk.refresh());
            QCOMPARE(std::ranges::count(desk.google.requests, "/token", &HttpStandIn::Request::target), renewals);
            QCOMPARE(desk.google.requests.last().headers.value("authorization"),
                     renewals ? QByteArray("Bearer ya29.fresh") : QByteArray("Bearer ya29.kept"));
            QCOMPARE(desk.calendar->meetings().size(), 2);
        }
    }

    void aRenewalKeepsTheRefreshToken()
    {
        const auto row = [](const QByteArray &reply, int life) {
            Desk desk;
            desk.link(0);
            desk.token.body = reply;
            QVERIFY(desk.refresh());
            QCOMPARE(
                desk.google.requests.value(0).body,
                QByteArray("client_id=id.example&client_secret=s%26%2B%3D%C3%BC&grant_type=refresh_token&refresh_token=1//kept"));
            const GoogleTokens expected{u"new"_s, u"1//kept"_s, desk.clock.wallTime().addSecs(life)};
            QCOMPARE(desk.kept(), std::optional(expected));
        };
        row(R"({"access_token": "new", "expires_in": 1800, "refresh_token": "other"})", 1800);
        row(R"({"access_token": "new"})", 3600);
        row(R"({"access_token": "new", "expires_in": "1800"})", 3600);
        row(R"({"access_token": "new", "expires_in": -5})", -5);

        Desk desk;
        desk.link(0);
        desk.token.body = R"({"access_token": "new", "expires_in": 1e300})"; // an end that nobody lives to see
        QVERIFY(desk.refresh());
        QVERIFY(desk.refresh());
        QCOMPARE(desk.google.requests.last().headers.value("authorization"), QByteArray("Bearer new"));
    }

    void aRefusedRenewalSaysSo()
    {
        const auto row = [](int status, const QByteArray &reply, const char *error) {
            Desk desk;
            desk.link(0);
            const auto before = desk.kept();
            desk.token = {status, reply};
            QVERIFY(desk.refresh());
            QCOMPARE(desk.calendar->errorText(), QLatin1String(error));
            QCOMPARE(desk.kept(), before);
            QCOMPARE(desk.google.requests.size(), 1);
        };
        row(400, R"({"error": "invalid_grant"})", "Google sign-in failed");
        for (const char *reply : {"{}", R"({"access_token": []})"})
            row(200, reply, "Google sign-in expired; reconnect Calendar");
    }

    void withoutTokensNothingIsAsked()
    {
        for (const char *record : {"", "tokens", R"({"accessToken": "a", "refreshToken": "b"})",
                                   R"({"accessToken": "a", "refreshToken": "b", "expiresAt": "soon"})",
                                   R"({"accessToken": "a", "refreshToken": "b", "expiresAt": 1e300})"}) {
            Desk desk;
            desk.keychain.put(GoogleAccount::tokenKey, QString::fromLatin1(record));
            desk.prefs.setCalendarSource(Prefs::CalendarSource::Google);
            QVERIFY(desk.refresh());
            QVERIFY2(desk.google.requests.isEmpty() && !desk.calendar->linked() && !desk.calendar->error(), record);
        }
    }

    /// Whatever is under way when the account is forgotten: it neither comes back nor fails in words.
    void aForgottenAccountStaysForgotten()
    {
        for (int step = 0; step < 10; ++step) { // at the last one all is there
            Desk desk;
            desk.link(0);
            QVERIFY(desk.settle());
            QVERIFY(desk.calendar->linked() && desk.google.requests.isEmpty());
            desk.calendar->refresh();
            // One answer, or one keychain call, at a time.
            for (int i = 0; i < step; ++i) {
                if (desk.background.pending()) {
                    QCOMPARE(desk.background.pending(), 1); // or an older write could come after the erasing
                    desk.background.finish();
                } else
                    desk.until([&, seen = desk.google.requests.size()] {
                        return desk.background.pending() || desk.google.requests.size() > seen || desk.http.underWay() == 0;
                    });
            }
            desk.calendar->disconnect();
            QVERIFY(desk.background.pending() <= 1);
            QVERIFY(desk.settle());
            QVERIFY2(desk.keychain.entries.isEmpty(), qPrintable(QString::number(step)));
            QVERIFY(desk.calendar->meetings().isEmpty() && !desk.calendar->error() && !desk.calendar->linked());
            QCOMPARE(desk.calendar->calendarRows()->rowCount(), 0);
            QCOMPARE(desk.prefs.calendarSource(), Prefs::CalendarSource::Manual);
        }
    }
};

const Registered<TokensTest> registered;

} // namespace velto

#include "TokensTest.moc"
