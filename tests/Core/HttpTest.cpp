#include "Core/Http.h"
#include "HttpStandIn.h"
#include "Platform/Fake/FakeBackground.h"

#include <QTest>
#include <qcoro/qcorotask.h>

using namespace std::chrono_literals;
using Answer = velto::HttpStandIn::Answer;
using Manner = velto::HttpStandIn::Manner;

using namespace Qt::StringLiterals;

namespace velto {

namespace {

HttpReply ask(Http &http, HttpRequest request)
{
    request.timeout = 2s;
    return QCoro::waitFor(http.send(std::move(request)));
}

} // namespace

class HttpTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void answersComeWhole()
    {
        for (const int status : {200, 201, 204, 401, 404, 429, 500, 503}) {
            HttpStandIn service(HttpStandIn::Security::Tls);
            service.answer = [&](const auto &) { return Answer{status, status == 204 ? "" : "{\"a\": 1}", {"Set-Cookie: a=b"}}; };
            Http http(service.trust());
            ask(http, {service.url(u"/%1"_s.arg(status))});
            service.requests.clear();
            const HttpReply reply = ask(http, {service.url(u"/x?y=1"_s), "POST", {{"Authorization", "Bearer t"}}, "body"});
            QCOMPARE(reply.status, std::optional(status));
            QCOMPARE(reply.body, status == 204 ? QByteArray() : QByteArray("{\"a\": 1}"));
            const HttpStandIn::Request seen = service.requests.value(0);
            QCOMPARE(seen.method + ' ' + seen.target + ' ' + seen.body, QByteArray("POST /x?y=1 body"));
            QCOMPARE(seen.headers.value("authorization"), QByteArray("Bearer t"));
            QVERIFY(!seen.headers.contains("cookie")); // cookies are neither kept nor sent
        }
    }

    void whatIsNotAWholeAnswerIsAFault()
    {
        for (const Manner manner : {Manner::Silent, Manner::Hangup, Manner::CutOff, Manner::Trickle}) {
            HttpStandIn service;
            service.answer = [&](const auto &) { return Answer{200, QByteArray(1000, 'x'), {}, manner}; };
            Http http;
            HttpRequest request{service.url()};
            request.timeout = 150ms; // less than the trickle takes
            const HttpReply reply = QCoro::waitFor(http.send(request));
            QVERIFY(!reply.status);
            QVERIFY(!reply.fault.isEmpty());
            QVERIFY(reply.body.isEmpty());
            QTRY_COMPARE(service.connections(), 0); // or what still comes would be read for ever
        }
        HttpStandIn generous;
        generous.answer = [](const auto &) { return Answer{200, QByteArray(50'000'000, 'x')}; };
        Http http;
        HttpRequest request{generous.url()};
        request.maximum = 1'000'000;
        QCOMPARE(ask(http, request).fault, u"The answer was too large."_s);
        QTRY_COMPARE(generous.connections(), 0);
        HttpStandIn unknown(HttpStandIn::Security::Tls); // by an authority that nobody trusts
        QVERIFY(!ask(http, {unknown.url()}).status);
        QVERIFY(unknown.requests.isEmpty());
    }

    void redirectsStayWithTheirOrigin()
    {
        HttpStandIn other;
        HttpStandIn service;
        service.answer = [&](const HttpStandIn::Request &request) {
            if (request.target == "/away")
                return Answer{302, "", {"Location: " + other.url(u"/trap"_s).toEncoded()}};
            if (request.target == "/round")
                return Answer{307, "", {"Location: /round"}};
            return request.target == "/near" ? Answer{302, "", {"Location: there?x=1"}} : Answer{};
        };
        Http http;
        const QList<std::pair<QByteArray, QByteArray>> token{{"authorization", "Bearer t"}, {"Content-Type", "text/plain"}};
        const auto status = [&](const char *path, const QByteArray &method, const std::optional<QByteArray> &body) {
            return ask(http, {service.url(QLatin1String(path)), method, token, body}).status;
        };
        QCOMPARE(status("/away", "GET", {}), std::optional(302));
        QCOMPARE(status("/away", "POST", "body"), std::optional(302));
        QVERIFY(other.requests.isEmpty());
        QCOMPARE(status("/near", "POST", "body"), std::optional(200));
        const HttpStandIn::Request last = service.requests.last();
        QCOMPARE(last.method + ' ' + last.target + ' ' + last.body, QByteArray("GET /there?x=1 "));
        QVERIFY(last.headers.contains("authorization") && !last.headers.contains("content-type"));
        QCOMPARE(status("/round", "GET", {}), std::optional(307));
    }

    void aServiceThatHangsUpIsntToldTwice()
    {
        HttpStandIn service;
        service.answer = [](const auto &) { return Answer{200, "", {}, Manner::Hangup}; };
        Http http;
        for (const char *method : {"GET", "POST", "PUT", "DELETE"}) {
            service.requests.clear();
            const auto body = qstrcmp(method, "GET") == 0 ? std::nullopt : std::optional<QByteArray>("body");
            const HttpReply reply = ask(http, {service.url(), method, {}, body});
            QCOMPARE(reply.fault, u"The connection ended without an answer."_s);
            QCOMPARE(service.requests.size(), 1);
        }
    }

    void aServiceIsLeftAloneAsLongAsItWants()
    {
        HttpStandIn service;
        service.answer = [](const auto &) { return Answer{429, "", {"Retry-After: 60"}}; };
        Http http;
        for (int i = 0; i < 3; ++i)
            QCOMPARE(ask(http, {service.url()}).status, std::optional(429));
        QCOMPARE(service.requests.size(), 1);
        service.answer = [](const auto &) { return Answer{503, "", {"Retry-After: Fri, 31 Dec 1999 23:59:59 GMT"}}; };
        Http another;
        for (int i = 0; i < 2; ++i)
            QCOMPARE(ask(another, {service.url()}).status, std::optional(503));
        QCOMPARE(service.requests.size(), 3);
    }

    void noRequestGoesOutBeforeItsProxiesAreKnown()
    {
        HttpStandIn proxy;
        FakeBackground background;
        auto http = std::make_unique<Http>(background, [&proxy](const QNetworkProxyQuery &query) {
            return QList<QNetworkProxy>{query.peerHostName() == QLatin1String("service.example")
                                            ? QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, quint16(proxy.url().port()))
                                            : QNetworkProxy(QNetworkProxy::NoProxy)};
        });
        const QUrl url(u"http://service.example/x"_s);
        QCoro::Task<HttpReply> first = http->send({url});
        QCoro::Task<HttpReply> second = http->send({url});
        QCOMPARE(background.pending(), 1); // one look-up at a time
        QVERIFY(proxy.requests.isEmpty());
        background.finishAll();
        QCOMPARE(QCoro::waitFor(first).status, std::optional(200));
        background.finishAll();
        QCOMPARE(QCoro::waitFor(second).status, std::optional(200));
        QCOMPARE(proxy.requests.value(0).target, QByteArray("http://service.example/x"));

        QCoro::Task<HttpReply> never = http->send({url});
        http.reset();
        QVERIFY(!QCoro::waitFor(never).status);
        background.finishAll();
        QCOMPARE(proxy.requests.size(), 2);
    }

    void anEndInTheMiddleIsAFault()
    {
        HttpStandIn service;
        service.answer = [](const auto &) { return Answer{200, "{}", {}, Manner::Silent}; };
        auto http = std::make_unique<Http>();
        QCoro::Task<HttpReply> task = http->send({service.url()});
        QTRY_COMPARE(service.requests.size(), 1);
        http.reset();
        QVERIFY(!QCoro::waitFor(task).status);
    }
};

} // namespace velto

QTEST_GUILESS_MAIN(velto::HttpTest)
#include "HttpTest.moc"
