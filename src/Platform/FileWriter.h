#pragma once

#include "Platform/Files.h"
#include "Platform/Timer.h"

#include <QObject>
#include <QStringList>
#include <vector>

namespace velto {

class Background;
class Clock;

/// Writes the newest state of a few files to the disk, off the UI thread: one write after the other, in the order in which
/// they were asked for. A state that is superseded before its turn isn't written. A failed write is tried again with
/// growing pauses, as soon as another file could be written, on request, and once more at the end. UI thread.
class FileWriter : public QObject {
    Q_OBJECT
public:
    struct Outcome {
        std::optional<FileError> error; ///< why it couldn't be written
        QString word; ///< what the user should know of it; see say()
    };
    /// Puts one state of a file on the disk; runs on the lane, perhaps several times.
    using Write = std::function<Outcome()>;

    /// `lane` runs one job at a time, in order; jobs that read these files between two writes go there too. Outlives this.
    FileWriter(Background &lane, Clock &clock, QObject *parent = nullptr);
    ~FileWriter() override;

    Background &lane() { return m_lane; }

    /// Replaces what waits for the same file. `saved` is called on the UI thread once this state is on the disk, unless
    /// `context` is gone by then or a newer state took its place.
    void write(const QString &path, Write write, QObject *context = nullptr, std::function<void()> saved = {});
    /// The same, a while after the first such state that waits: for what changes with each key. The end doesn't wait.
    void writeSoon(const QString &path, std::chrono::milliseconds pause, Write write);
    /// Whether the newest state of this file is on the disk.
    bool isSaved(const QString &path) const;
    /// Why it isn't, in one sentence; empty while it is, or is about to be.
    QString problem(const QString &path) const;
    /// The same for all files.
    QStringList problems() const;
    /// Retries at once what has failed: the user asked for it or is back, or there may be space again.
    void tryAgain();
    /// The program is ending: waits for the write under way and retries everything else once, for `limit` at most. Returns what
    /// couldn't be saved, one sentence each.
    QStringList finish(std::chrono::milliseconds limit);

    /// What the user should know of this file, until they have read it: the newest sentence.
    void say(const QString &path, const QString &sentence);
    QString word(const QString &path) const;
    /// The same for all files.
    QStringList words() const;
    void dismissWords();

Q_SIGNALS:
    /// A problem or a word has changed, or a state has reached the disk.
    void changed();

private:
    struct Attempt;
    struct Entry {
        QString path;
        Write write;
        std::function<void()> saved;
        int wanted = 0; ///< counts the states
        int onDisk = 0; ///< the one that the disk has
        bool waits = false; ///< is in m_turns
        TimerHandle soon; ///< until it is put there
        QString problem;
        QString word;
    };

    Entry &entry(const QString &path);
    Entry &take(const QString &path, Write write);
    const Entry *find(const QString &path) const;
    void queue(Entry &entry);
    void startNext();
    void settle();
    void settleFailure(Entry &entry, const FileError &error);
    QStringList texts(QString Entry::*field) const;
    void queueFailed();

    Background &m_lane;
    Clock &m_clock;
    std::vector<Entry> m_entries;
    std::vector<QString> m_turns;
    std::shared_ptr<Attempt> m_attempt; ///< the write under way
    std::chrono::milliseconds m_pause;
    bool m_finishing = false;
    TimerHandle m_retry;
    TimerHandle m_slow;
};

} // namespace velto
