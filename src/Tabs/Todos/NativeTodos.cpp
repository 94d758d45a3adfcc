#include "Tabs/Todos/NativeTodos.h"

#include "Platform/Background.h"
#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Tabs/Todos/TodoFile.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::milliseconds kSettled{300}; ///< a program that writes in pieces is through by then
constexpr std::chrono::seconds kSecondLook{2};

} // namespace

NativeTodos::NativeTodos(Files &files, FileWriter &writer, Clock &clock, const Places &places, QObject *parent)
    : QObject(parent)
    , m_writer(writer)
    , m_clock(clock)
    , m_path(places.data + "/todos.json"_L1)
    , m_file(std::make_shared<TodoFile>(files, m_path))
{
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { lookSoon(kSettled); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] { lookSoon(kSettled); });
}

NativeTodos::~NativeTodos() = default;

QList<Todo> NativeTodos::load()
{
    const TodoFile::Reading reading = m_file->read();
    m_existed = !reading.error || !reading.error->missing;
    if (reading.todos) {
        m_file->accept(reading.digest);
        return *reading.todos;
    }
    if (!reading.error) {
        m_doubtful = m_told = reading.digest;
        m_writer.say(m_path,
                     tr("todos.json can't be made out, so the list starts empty. A copy is kept before anything is saved."));
    } else if (!reading.error->missing) {
        m_writer.say(m_path, tr("%1 The list starts empty.").arg(reading.error->message));
    }
    return {};
}

void NativeTodos::save(const QList<Todo> &todos)
{
    ++m_saves;
    m_forgotten = false;
    m_writer.write(
        m_path, [file = m_file, todos, now = m_clock.wallTime()] { return file->write(todos, now); }, this,
        [this] { m_existed = watch(); }); // the first save creates the file to watch
}

void NativeTodos::forget()
{
    m_forgotten = true;
    m_writer.lane().start([file = m_file] { file->accept({}); }, [] {});
}

void NativeTodos::look()
{
    const bool exists = watch();
    // A save under way comes first, and keeps a copy of what others wrote.
    if (!(exists || m_existed) || m_forgotten || !m_writer.isSaved(m_path))
        return;
    inBackground(
        m_writer.lane(), this, [file = m_file] { return file->changedByOthers(); },
        [this, saves = m_saves](const std::optional<TodoFile::Reading> &reading) {
            if (saves != m_saves)
                return;
            if (reading && reading->error)
                return lookAgainForIt();
            m_existed = true;
            m_missed = false;
            if (!reading)
                return;
            if (reading->todos) {
                m_doubtful.clear();
                m_writer.lane().start([file = m_file, digest = reading->digest] { file->accept(digest); }, [] {});
                Q_EMIT replaced(*reading->todos);
            } else if (std::exchange(m_doubtful, reading->digest) != reading->digest) {
                lookSoon(kSecondLook);
            } else if (std::exchange(m_told, reading->digest) != reading->digest) {
                m_writer.say(m_path,
                             tr("Another program changed todos.json, and it can't be made out. Velto goes on with "
                                "the list as it was, and keeps a copy before it saves."));
            }
        });
}

/// Only at the second look is it gone for good: some programs replace a file by deleting it first.
void NativeTodos::lookAgainForIt()
{
    if (!std::exchange(m_missed, true))
        return lookSoon(kSecondLook);
    m_existed = false;
    m_missed = false;
    m_writer.say(m_path, tr("todos.json was gone. Velto has written the list again."));
    Q_EMIT disappeared();
}

void NativeTodos::lookSoon(std::chrono::milliseconds delay)
{
    m_soon = m_clock.after(delay, [this] { look(); });
}

/// The folder reports a file that replaces this one; the file reports what is written into it. False if it doesn't exist.
bool NativeTodos::watch()
{
    const auto watches = [this](const QString &path) {
        if (m_watcher.files().contains(path) || m_watcher.directories().contains(path))
            return true;
        const bool exists = QFileInfo::exists(path);
        if (exists)
            m_watcher.addPath(path);
        return exists;
    };
    watches(QFileInfo(m_path).path());
    return watches(m_path);
}

} // namespace velto
