#pragma once

#include "Platform/Timer.h"
#include "Tabs/Todos/Todo.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <memory>

namespace velto {

class Clock;
class Files;
class FileWriter;
class TodoFile;
struct Places;

/// The todos that Velto keeps itself, in one JSON file; see TodoFile for what it takes care of. Writes go through the FileWriter,
/// which also says what went wrong with this path. UI thread.
class NativeTodos : public QObject {
    Q_OBJECT
public:
    NativeTodos(Files &files, FileWriter &writer, Clock &clock, const Places &places, QObject *parent = nullptr);
    ~NativeTodos() override;

    const QString &path() const { return m_path; }
    /// The list in the file; an empty one if there is no file or it makes no sense, and then the writer has a word about it.
    /// Blocks.
    QList<Todo> load();
    /// Queues the whole list for writing.
    void save(const QList<Todo> &todos);
    /// The next list to be saved isn't a later state of the file: what the file holds by then is copied first.
    void forget();
    /// Looks, in the background, whether another program has changed the file. It is watched too, where the system can.
    void look();

Q_SIGNALS:
    /// Another program has put this list into the file, while nothing of Velto's own was on its way there.
    void replaced(const QList<velto::Todo> &todos);
    /// The file was there and has gone: what is on the screen should be saved again.
    void disappeared();

private:
    void lookAgainForIt();
    void lookSoon(std::chrono::milliseconds delay);
    bool watch();

    FileWriter &m_writer;
    Clock &m_clock;
    QString m_path;
    std::shared_ptr<TodoFile> m_file; ///< on the writer's lane only, once load() is through
    int m_saves = 0;
    bool m_forgotten = false;
    bool m_existed = false;
    bool m_missed = false; ///< by the last look
    QByteArray m_doubtful; ///< the digest of what couldn't be read, perhaps because it was only half written
    QByteArray m_told; ///< the one that the user was told of
    QFileSystemWatcher m_watcher;
    TimerHandle m_soon;
};

} // namespace velto
