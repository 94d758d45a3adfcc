#include "Tabs/Agents/SessionNotes.h"

#include "Platform/Files.h"
#include "Platform/Machine.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kLargestNote = 65536;

} // namespace

SessionNotes::SessionNotes(const FileTree &tree, const Files &files, const Machine &machine, QString folder)
    : m_tree(tree)
    , m_files(files)
    , m_machine(machine)
    , m_folder(std::move(folder))
{
}

QList<SessionStatus> SessionNotes::read()
{
    QList<SessionStatus> sessions;
    QHash<QString, Note> notes;
    m_tree.each(m_folder, ".json", [&](const TreeFile &file) {
        const QString path = QFile::decodeName(QByteArray::fromStdString(file.path));
        Note note = m_notes.value(path);
        if (note.modified != file.modified) {
            const auto read = m_files.read(path, kLargestNote);
            const auto *bytes = std::get_if<QByteArray>(&read);
            const QJsonObject object = bytes ? QJsonDocument::fromJson(*bytes).object() : QJsonObject();
            // Claude Code rewrites a note in place: one that is read halfway makes no sense, and is read again next time.
            if (const QString session = object.value("sessionId"_L1).toString(); !session.isEmpty()) {
                note = {file.modified,
                        object.value("pid"_L1).toInteger(),
                        {session, object.value("status"_L1).toString() == "waiting"_L1,
                         object.value("statusUpdatedAt"_L1).toInteger()}};
            }
        }
        notes.insert(path, note);
        // A killed session leaves its note behind.
        if (!note.status.session.isEmpty() && (!note.status.waits || m_machine.lives(note.pid)))
            sessions.append(note.status);
    });
    m_notes = std::move(notes);
    return sessions;
}

} // namespace velto
