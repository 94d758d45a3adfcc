#pragma once

#include "FakeHttp.h"

#include "Core/HookInstaller.h"
#include "Core/HookListener.h"
#include "Core/Hub.h"
#include "Core/Prefs.h"
#include "Core/TerminalApp.h"
#include "Platform/Fake/FakeBackground.h"
#include "Platform/Fake/FakeClock.h"
#include "Platform/Fake/FakeFiles.h"
#include "Platform/Fake/FakePlatform.h"
#include "Platform/Fake/FakeToolRunner.h"
#include "Platform/Places.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Quillbox/HubClient.h"
#include "Tabs/Quillbox/QuillboxSource.h"

namespace velto {

/// A whole desktop that does as it is told, and the Hub on top of it.
struct World {
    FakeClock clock;
    FakeBackground background;
    FakeToolRunner tools;
    FakeFiles files;
    FakeDefaults defaults;
    FakeApplications applications;
    FakeAccessibility accessibility;
    FakeWorkspace workspace;
    FakeTerminals terminals;
    Places places{QStringLiteral("/home/me"), {}, {}, QStringLiteral("/tmp")};
    Prefs prefs{defaults, places, clock};
    HookInstaller installer{files, clock, places.home, QStringLiteral("token")};
    TerminalApp terminal{defaults, terminals, places};
    FakeMachine machine;
    FakeHttp http;
    QuillboxMode quillboxMode; ///< counts from the next reconnect on
    HubClient hubClient{http, background, [this] { return quillboxMode; }};
    Hub hub{{clock, accessibility, applications, workspace, prefs, terminal, makeQuillbox(), makeAgents()}};

    std::unique_ptr<QuillboxSource> makeQuillbox()
    {
        return std::make_unique<QuillboxSource>(QuillboxSource::Needs{clock, machine, hubClient, places.home});
    }
    std::unique_ptr<AgentsSource> makeAgents()
    {
        tools.installed.insert(QStringLiteral("claude"));
        setListing("[]");
        return std::make_unique<AgentsSource>(AgentsSource::Needs{clock, background, tools, files, applications, workspace, prefs,
                                                                  terminal, places, installer, nullptr});
    }
    /// What `claude agents --json` prints from now on.
    void setListing(const QByteArray &json) { tools.answers.insert(QStringLiteral("claude agents --json"), {true, json, {}}); }
    /// A listing with this many sessions of each kind, all started a minute ago.
    void setSessions(int working, int blocked)
    {
        QByteArray json = "[";
        for (int i = 0; i < working + blocked; ++i) {
            json += i ? "," : "";
            json += QStringLiteral(R"({"id":"s%1","name":"session %1","state":"%2","startedAt":%3,"cwd":"/home/me/p%1"})")
                        .arg(i)
                        .arg(i < working ? QStringLiteral("working") : QStringLiteral("blocked"))
                        .arg(clock.wallTime().toMSecsSinceEpoch() - 60'000 + i)
                        .toUtf8();
        }
        setListing(json + "]");
    }
    void refresh()
    {
        hub.refresh(false);
        background.finishAll();
    }
    /// Connects to a hub that answers with this from now on.
    void connectHub(const QByteArray &snapshot)
    {
        http.answer = [snapshot](const HttpRequest &) { return HttpReply{200, snapshot, {}}; };
        quillboxMode = QuillboxMode::hub(QUrl(QStringLiteral("https://hub.example.net")), QStringLiteral("token"));
        hub.quillbox()->reconnect();
        background.finishAll();
    }
    void wait(int milliseconds) { clock.advance(std::chrono::milliseconds(milliseconds)); }
};

} // namespace velto
