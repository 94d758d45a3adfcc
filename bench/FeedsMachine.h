#pragma once

#include "Core/Http.h"
#include "HttpStandIn.h"
#include "Hub/Stores.h"
#include "Platform/Clock.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Platform/Posix/PosixFileTree.h"
#include "Platform/Posix/PosixFiles.h"
#include "Platform/Posix/PosixToolRunner.h"
#include "Platform/Posix/SystemClock.h"
#include "Platform/Posix/ThreadPoolBackground.h"

#include <QSemaphore>
#include <QThread>

namespace velto {

using namespace Qt::StringLiterals;

/// Answers in a thread of its own, as a remote service would: the responses of the work tools and of Google, as large as their
/// APIs send them.
class Services final : public QThread {
public:
    Services()
    {
        start();
        m_ready.acquire();
    }
    ~Services() override
    {
        quit();
        wait();
    }
    QUrl base;
    QSslConfiguration trust;

protected:
    void run() override
    {
        HttpStandIn standIn(HttpStandIn::Security::Tls);
        standIn.answer = [](const HttpStandIn::Request &request) { return HttpStandIn::Answer{200, answer(request.target)}; };
        base = standIn.url();
        trust = standIn.trust();
        m_ready.release();
        exec();
    }

private:
    /// 20 entries with long descriptions that are never read.
    static QByteArray list(const char *before, const QByteArray &entry, const char *after, int padding)
    {
        QByteArray body = before;
        for (int i = 0; i < 20; ++i) {
            QByteArray one = entry;
            body += (i ? "," : "") + one.replace("%n", QByteArray::number(i)).replace("%p", QByteArray(padding, 'x'));
        }
        return body + after;
    }
    static QByteArray answer(const QByteArray &target)
    {
        if (target.contains("linear"))
            return list(R"({"data":{"viewer":{"assignedIssues":{"nodes":[)",
                        R"({"identifier":"ENG-%n","title":"An issue %n","url":"https://linear.app/a/%n","description":"%p"})",
                        "]}}}}", 100'000);
        if (target.contains("atlassian"))
            return list(R"({"issues":[)", R"({"key":"ED-%n","fields":{"summary":"An issue %n","description":"%p"}})", "]}",
                        100'000);
        if (target.contains("auth.test"))
            return R"({"ok":true,"user_id":"U1","user":"sam"})";
        if (target.contains("slack"))
            return list(R"({"ok":true,"messages":{"matches":[)",
                        QByteArray(R"({"ts":"%t.%n","text":"Could you look at this %n? %p","username":"kim","permalink":)"
                                   R"("https://acme.slack.com/%n","channel":{"name":"general"}})")
                            .replace("%t", QByteArray::number(QDateTime::currentSecsSinceEpoch() - 60)),
                        "]}}", 20'000);
        if (target.contains("calendarList"))
            return list(R"({"items":[)", R"({"id":"calendar%n","summary":"Calendar %n","selected":true,"description":"%p"})",
                        "]}", 1000);
        if (target.contains("/events")) {
            const QByteArray start = QDateTime::currentDateTimeUtc().addSecs(3600).toString(Qt::ISODate).toUtf8();
            return list(R"({"items":[)",
                        QByteArray(R"({"id":"event%n","summary":"A meeting %n","description":"%p","start":{"dateTime":"%t"},)"
                                   R"("end":{"dateTime":"%t"}})")
                            .replace("%t", start),
                        "]}", 50'000);
        }
        return R"({"title":"A video","author_name":"Kim"})";
    }

    QSemaphore m_ready;
};

/// Sends every request to the services here, with its real host in the path.
class Rerouted final : public Http {
public:
    explicit Rerouted(const Services &services)
        : Http(services.trust)
        , m_base(services.base)
    {
    }
    QCoro::Task<HttpReply> send(HttpRequest request) override
    {
        request.url.setPath(u'/' + request.url.host() + request.url.path());
        request.url.setHost(m_base.host());
        request.url.setPort(m_base.port());
        return Http::send(std::move(request));
    }

private:
    QUrl m_base;
};

/// The machine: real tools, files, threads and sockets; a fake desktop.
struct Machinery {
    explicit Machinery(const QString &folder)
        : places{folder, folder + u"/.config/velto"_s, folder + u"/.local/share/Velto"_s, folder, folder + u"/Downloads"_s}
        , tools({folder + u"/bin"_s, u"/usr/bin"_s, u"/bin"_s})
    {
        keychain.entries = {{u"Velto.linear"_s, u"t"_s},
                            {u"Velto.jira"_s, u"t"_s},
                            {u"Velto.slack"_s, u"t"_s},
                            {GoogleAccount::tokenKey,
                             GoogleTokens{u"access"_s, u"refresh"_s, QDateTime::currentDateTimeUtc().addDays(1)}.toJson()}};
        defaults.values = {{u"modulesOff"_s, QStringList()},      {u"onboarded"_s, true},
                           {u"hookToken"_s, u"token"_s},          {u"repoRoots"_s, QStringList{folder + u"/code"_s}},
                           {u"jiraSite"_s, u"a.atlassian.net"_s}, {u"jiraEmail"_s, u"sam@acme.example"_s},
                           {u"calendarSource"_s, u"google"_s}};
        QStringList calendars;
        for (int i = 0; i < 20; ++i)
            calendars.append(u"calendar%1"_s.arg(i));
        defaults.set(u"googleCalendarIDs"_s, calendars);
        clipboard.setText(u"https://www.youtube.com/watch?v=1"_s);
        for (int i = 0; i < 3; ++i)
            players.players.append({{u"player%1"_s.arg(i)}, std::nullopt});
    }
    Desktop desktop()
    {
        return {clock,   background, tools,     files,       writer,       fileTree,      defaults,
                http,    keychain,   clipboard, workspace,   applications, accessibility, terminals,
                machine, players,    sounds,    folderPanel, videoPlayer,  places};
    }

    Services services;
    Places places;
    const std::unique_ptr<Clock> ownClock = systemClock();
    Clock &clock = *ownClock;
    PosixFiles files;
    PosixFileTree fileTree;
    PosixToolRunner tools;
    ThreadPoolBackground background;
    ThreadPoolBackground writing{1};
    FileWriter writer{writing, clock};
    FakeDefaults defaults;
    FakeKeychain keychain;
    FakeClipboard clipboard;
    FakeWorkspace workspace;
    FakeApplications applications;
    FakeAccessibility accessibility;
    FakeTerminals terminals;
    FakeMachine machine;
    FakeMediaPlayers players;
    FakeSounds sounds;
    FakeFolderPanel folderPanel;
    FakeVideoPlayer videoPlayer;
    Rerouted http{services};
};

} // namespace velto
