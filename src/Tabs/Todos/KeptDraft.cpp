#include "Tabs/Todos/KeptDraft.h"

#include "Platform/Clock.h"
#include "Platform/FileWriter.h"
#include "Platform/Places.h"
#include "Tabs/Todos/TodoJson.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr std::chrono::seconds kPause{1};
constexpr qint64 kLargestFile = 16 * 1024 * 1024;

} // namespace

KeptDraft::KeptDraft(Files &files, FileWriter &writer, Clock &clock, const Places &places)
    : m_files(files)
    , m_writer(writer)
    , m_clock(clock)
    , m_path(places.data + "/draft.json"_L1)
{
}

std::optional<KeptDraft::Draft> KeptDraft::left()
{
    const auto content = m_files.read(m_path, kLargestFile);
    const auto *bytes = std::get_if<QByteArray>(&content);
    const auto todos = bytes ? decodeTodos(*bytes) : std::nullopt;
    m_inFile = todos && (todos->size() == 1 || todos->size() == 2);
    if (!m_inFile)
        return std::nullopt;
    // A list gives each todo an id of its own.
    Draft draft{todos->size() == 2 ? todos->front() : Todo{}, todos->back()};
    draft.edited.id = draft.opened.id;
    return draft;
}

void KeptDraft::keep(const Draft &draft)
{
    m_newest = draft;
    if (!m_soon)
        m_soon = m_clock.after(kPause, [this] { write(); });
}

void KeptDraft::write()
{
    m_soon.reset();
    m_inFile = true;
    QList<Todo> todos{m_newest.edited};
    if (m_newest.opened.id != 0)
        todos.prepend(m_newest.opened);
    m_writer.write(m_path, [&files = m_files, path = m_path, bytes = encodeTodos(todos)] {
        return FileWriter::Outcome{files.replace(path, bytes), {}};
    });
}

void KeptDraft::forget()
{
    m_soon.reset();
    if (!std::exchange(m_inFile, false))
        return;
    m_writer.write(m_path, [&files = m_files, path = m_path] {
        const FileWriter::Outcome outcome{files.replace(path, "[]"), {}}; // the folder may not allow files to be removed
        QFile::remove(path);
        return outcome;
    });
}

} // namespace velto
