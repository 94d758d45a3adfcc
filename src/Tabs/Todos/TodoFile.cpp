#include "Tabs/Todos/TodoFile.h"

#include "Tabs/Todos/TodoJson.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargestFile = 256 * 1024 * 1024;

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Blake2b_256);
}

} // namespace

TodoFile::TodoFile(Files &files, QString path)
    : m_files(files)
    , m_path(std::move(path))
{
}

QString TodoFile::name() const
{
    return QFileInfo(m_path).fileName();
}

TodoFile::Reading TodoFile::read() const
{
    auto content = m_files.read(m_path, kLargestFile);
    if (auto *error = std::get_if<FileError>(&content))
        return {std::nullopt, {}, std::move(*error)};
    const auto &bytes = std::get<QByteArray>(content);
    return {decodeTodos(bytes), digestOf(bytes), std::nullopt};
}

std::optional<TodoFile::Reading> TodoFile::changedByOthers()
{
    const QFileInfo file(m_path);
    if (!file.isFile()) {
        const auto content = m_files.read(m_path, kLargestFile);
        const auto *error = std::get_if<FileError>(&content);
        return error && error->missing ? std::optional(Reading{std::nullopt, {}, *error}) : std::nullopt;
    }
    const Stamp stamp{file.lastModified(), file.size()};
    if (m_looked == stamp)
        return std::nullopt;
    const auto content = m_files.read(m_path, kLargestFile);
    const auto *bytes = std::get_if<QByteArray>(&content);
    if (!bytes)
        return std::nullopt;
    const QByteArray digest = digestOf(*bytes);
    if (digest == m_known) {
        m_looked = stamp;
        return std::nullopt;
    }
    return Reading{decodeTodos(*bytes), digest, std::nullopt};
}

FileWriter::Outcome TodoFile::write(const QList<Todo> &todos, const QDateTime &now)
{
    const QByteArray bytes = encodeTodos(todos);
    FileWriter::Outcome outcome;
    // As late as possible, so that what another program writes meanwhile is seen.
    const auto kept = [&] { return keepForeign(now, outcome); };
    if (auto error = m_files.replace(m_path, bytes, kept)) {
        if (!outcome.error)
            outcome.error = std::move(error);
    } else {
        m_known = digestOf(bytes);
    }
    return outcome;
}

bool TodoFile::keepForeign(const QDateTime &now, FileWriter::Outcome &outcome)
{
    const auto content = m_files.read(m_path, kLargestFile);
    if (const auto *error = std::get_if<FileError>(&content)) {
        if (!error->missing)
            outcome.error = *error;
        return error->missing;
    }
    const auto &bytes = std::get<QByteArray>(content);
    const QByteArray digest = digestOf(bytes);
    if (digest == m_known || bytes.trimmed().isEmpty())
        return true;
    const auto copy = keepCopy(m_files, m_path + ".kept-"_L1, now, bytes);
    if (const auto *error = std::get_if<FileError>(&copy)) {
        outcome.error = *error;
        return false;
    }
    m_known = digest; // one copy is enough, even if the save fails and is tried again
    outcome.word = QCoreApplication::translate("TodoFile", "%1 held something that Velto hadn't written. It is kept as %2.")
                       .arg(name(), QFileInfo(std::get<QString>(copy)).fileName());
    return true;
}

} // namespace velto
