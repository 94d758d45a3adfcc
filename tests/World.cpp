#include "World.h"

namespace velto {

World::World(QHash<QString, QByteArray> contents)
    : initialFiles(std::move(contents))
{
}

World::~World() = default;

Desktop World::prepared()
{
    files.contents = initialFiles;
    tools.installed.insert(QStringLiteral("claude"));
    setListing("[]");
    defaults.set(QStringLiteral("modulesOff"),
                 QStringList{QStringLiteral("calendar"), QStringLiteral("prs"), QStringLiteral("work"), QStringLiteral("media"),
                             QStringLiteral("usage"), QStringLiteral("mcp"), QStringLiteral("repos")});
    defaults.set(QStringLiteral("hookToken"), QStringLiteral("token"));
    return {clock,     background,   tools,         files,     writer,  fileTree, defaults, http,        keychain,    clipboard,
            workspace, applications, accessibility, terminals, machine, players,  sounds,   folderPanel, videoPlayer, places};
}

void World::setListing(const QByteArray &json)
{
    tools.answers.insert(QStringLiteral("claude agents --json"), {true, json, {}});
}

void World::setSessions(int working, int blocked)
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

void World::refresh()
{
    hub.refresh(false);
    background.finishAll();
}

void World::addTodo(const QString &title, int days, qint64 prio, const QString &project)
{
    Todo todo;
    todo.title = title;
    todo.due = textOf(clock.wallTime().toLocalTime().date().addDays(days));
    todo.prio = prio;
    todo.project = project;
    todos.save(todo);
}

void World::meetIn(int seconds)
{
    prefs.set(Prefs::Module::Calendar, true);
    prefs.setMeetingTitle(QStringLiteral("Review"));
    prefs.setMeetingURL(QStringLiteral("https://meet.example.com/x"));
    prefs.setMeetingStart(clock.wallTime().addSecs(seconds));
    everyday.loadCalendar();
    wait(0);
}

void World::connectHub(const QByteArray &snapshot)
{
    http.answer = [snapshot](const HttpRequest &) { return HttpReply{200, snapshot, {}}; };
    quillboxMode = QuillboxMode::hub(QUrl(QStringLiteral("https://hub.example.net")), QStringLiteral("token"));
    quillbox.reconnect();
    background.finishAll();
}

} // namespace velto
