#include "Platform/FileWriter.h"

#include "Platform/Background.h"
#include "Platform/Clock.h"

#include <QFileInfo>
#include <QPointer>
#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace velto {

namespace {

constexpr std::chrono::seconds kFirstPause{1};
constexpr std::chrono::seconds kLongestPause{30};
constexpr std::chrono::seconds kSlow{5};

} // namespace

struct FileWriter::Attempt {
    QString path;
    int state = 0; ///< which one is written
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    Outcome outcome;

    void finish(Outcome made)
    {
        const std::lock_guard lock(mutex);
        outcome = std::move(made);
        done = true;
        finished.notify_all();
    }
    bool wait(Instant deadline)
    {
        std::unique_lock lock(mutex);
        return finished.wait_until(lock, deadline, [this] { return done; });
    }
};

FileWriter::FileWriter(Background &lane, Clock &clock, QObject *parent)
    : QObject(parent)
    , m_lane(lane)
    , m_clock(clock)
    , m_pause(kFirstPause)
{
}

FileWriter::~FileWriter() = default;

FileWriter::Entry &FileWriter::entry(const QString &path)
{
    const auto found = std::ranges::find(m_entries, path, &Entry::path);
    if (found != m_entries.end())
        return *found;
    Entry &made = m_entries.emplace_back();
    made.path = path;
    return made;
}

const FileWriter::Entry *FileWriter::find(const QString &path) const
{
    const auto found = std::ranges::find(m_entries, path, &Entry::path);
    return found == m_entries.end() ? nullptr : &*found;
}

/// The newest state of a file.
FileWriter::Entry &FileWriter::take(const QString &path, Write write)
{
    Entry &now = entry(path);
    now.write = std::move(write);
    now.saved = {};
    ++now.wanted;
    return now;
}

void FileWriter::write(const QString &path, Write write, QObject *context, std::function<void()> saved)
{
    Entry &now = take(path, std::move(write));
    if (saved) {
        now.saved = [alive = QPointer(context), saved = std::move(saved)] {
            if (alive)
                saved();
        };
    }
    queue(now);
    startNext();
}

void FileWriter::writeSoon(const QString &path, std::chrono::milliseconds pause, Write write)
{
    Entry &now = take(path, std::move(write));
    if (now.soon || now.waits)
        return;
    now.soon = m_clock.after(pause, [this, path] {
        queue(entry(path));
        startNext();
    });
}

bool FileWriter::isSaved(const QString &path) const
{
    const Entry *one = find(path);
    return !one || one->onDisk == one->wanted;
}

QString FileWriter::problem(const QString &path) const
{
    const Entry *one = find(path);
    return one ? one->problem : QString();
}

QStringList FileWriter::problems() const
{
    return texts(&Entry::problem);
}

QStringList FileWriter::texts(QString Entry::*field) const
{
    QStringList sentences;
    for (const Entry &one : m_entries) {
        if (!(one.*field).isEmpty())
            sentences.append(one.*field);
    }
    return sentences;
}

void FileWriter::tryAgain()
{
    m_pause = kFirstPause;
    queueFailed();
    startNext();
}

void FileWriter::queue(Entry &entry)
{
    entry.soon.reset();
    if (!std::exchange(entry.waits, true))
        m_turns.push_back(entry.path);
}

void FileWriter::queueFailed()
{
    m_retry.reset();
    for (Entry &one : m_entries) {
        if (one.onDisk != one.wanted && !one.soon && !(m_attempt && m_attempt->path == one.path))
            queue(one);
    }
}

void FileWriter::startNext()
{
    if (m_attempt || m_turns.empty())
        return;
    Entry &next = entry(m_turns.front());
    m_turns.erase(m_turns.begin());
    next.waits = false;
    const auto attempt = std::make_shared<Attempt>();
    attempt->path = next.path;
    attempt->state = next.wanted;
    m_attempt = attempt;
    m_slow = m_clock.after(kSlow, [this, path = next.path] {
        entry(path).problem = tr("%1 isn't saved yet: the disk doesn't answer.").arg(QFileInfo(path).fileName());
        Q_EMIT changed();
    });
    m_lane.start([attempt, write = next.write] { attempt->finish(write()); },
                 [attempt, self = QPointer(this)] {
                     // At the program's end it may have been settled already.
                     if (self && self->m_attempt == attempt)
                         self->settle();
                 });
}

void FileWriter::settle()
{
    const auto attempt = std::exchange(m_attempt, nullptr);
    m_slow.reset();
    Entry &one = entry(attempt->path);
    if (!attempt->outcome.word.isEmpty())
        one.word = attempt->outcome.word;
    if (const auto &error = attempt->outcome.error) {
        settleFailure(one, *error);
    } else {
        one.onDisk = attempt->state;
        one.problem.clear();
        m_pause = kFirstPause;
        if (!m_finishing)
            queueFailed(); // what kept the other files from being saved may be over
        if (one.onDisk == one.wanted) {
            one.write = {}; // frees the state that it holds
            if (const auto saved = std::exchange(one.saved, {}))
                saved();
        }
    }
    Q_EMIT changed();
    startNext();
}

void FileWriter::settleFailure(Entry &entry, const FileError &error)
{
    entry.problem = error.message;
    if (m_finishing || m_retry)
        return;
    m_retry = m_clock.after(m_pause, [this] {
        queueFailed();
        startNext();
    });
    m_pause = std::min<std::chrono::milliseconds>(2 * m_pause, kLongestPause);
}

QStringList FileWriter::finish(std::chrono::milliseconds limit)
{
    // Real time, not the injected clock's: this waits for a thread.
    const auto deadline = std::chrono::steady_clock::now() + limit;
    m_finishing = true;
    for (Entry &one : m_entries) {
        if (one.soon)
            queue(one);
    }
    queueFailed();
    startNext();
    while (m_attempt && m_attempt->wait(deadline))
        settle();
    m_finishing = false;
    QStringList lost;
    for (const Entry &one : m_entries) {
        if (one.onDisk == one.wanted)
            continue;
        const QString late = tr("%1 couldn't be saved in time.").arg(QFileInfo(one.path).fileName());
        lost.append(one.problem.isEmpty() ? late : one.problem);
    }
    return lost;
}

void FileWriter::say(const QString &path, const QString &sentence)
{
    entry(path).word = sentence;
    Q_EMIT changed();
}

QString FileWriter::word(const QString &path) const
{
    const Entry *one = find(path);
    return one ? one->word : QString();
}

QStringList FileWriter::words() const
{
    return texts(&Entry::word);
}

void FileWriter::dismissWords()
{
    for (Entry &one : m_entries)
        one.word.clear();
    Q_EMIT changed();
}

} // namespace velto
