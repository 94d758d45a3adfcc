#include "Tabs/Todos/KeptTodos.h"

#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Tabs/Todos/TodoJson.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kPause{1};
constexpr qint64 kLargestFile = 16 * 1024 * 1024;

/// Replaces the file. One that isn't such a list is set aside: it may hold what the user wrote.
FileWriter::Outcome replaced(Files &files, const QString &path, const QDateTime &now, const QByteArray &bytes)
{
    FileWriter::Outcome outcome;
    const auto standing = files.read(path, kLargestFile);
    if (const auto *unread = std::get_if<FileError>(&standing)) {
        if (!unread->missing)
            return {*unread, {}};
    } else if (const auto &before = std::get<QByteArray>(standing); !decodeTodos(before) && !before.trimmed().isEmpty()) {
        const auto copy = keepCopy(files, path + ".damaged-"_L1, now, before);
        if (const auto *error = std::get_if<FileError>(&copy))
            return {*error, {}};
        outcome.word = QCoreApplication::translate("KeptTodos", "%1 couldn't be made out. It is kept as %2.")
                           .arg(QFileInfo(path).fileName(), QFileInfo(std::get<QString>(copy)).fileName());
    }
    outcome.error = files.replace(path, bytes);
    return outcome;
}

} // namespace

KeptTodos::KeptTodos(Files &files, FileWriter &writer, const Clock &clock, QString path)
    : m_files(files)
    , m_writer(writer)
    , m_clock(clock)
    , m_path(std::move(path))
{
}

QList<Todo> KeptTodos::left()
{
    const auto content = m_files.read(m_path, kLargestFile);
    const auto *bytes = std::get_if<QByteArray>(&content);
    const auto todos = bytes ? decodeTodos(*bytes) : std::nullopt;
    m_inFile = todos && !todos->isEmpty();
    return todos.value_or(QList<Todo>());
}

void KeptTodos::keep(const QList<Todo> &todos)
{
    if (!todos.isEmpty()) {
        m_inFile = true;
        m_writer.writeSoon(m_path, kPause, [&files = m_files, path = m_path, now = m_clock.wallTime(), todos] {
            return replaced(files, path, now, encodeTodos(todos));
        });
    } else if (std::exchange(m_inFile, false)) {
        m_writer.write(m_path, [&files = m_files, path = m_path, now = m_clock.wallTime()] {
            FileWriter::Outcome outcome = replaced(files, path, now, "[]"); // the folder may not allow files to be removed
            if (!outcome.error)
                QFile::remove(path);
            return outcome;
        });
    }
}

} // namespace velto
