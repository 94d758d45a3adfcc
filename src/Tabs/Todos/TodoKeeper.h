#pragma once

#include "Core/SourceState.h"
#include "Platform/Timer.h"
#include "Tabs/Quillbox/QuillboxMode.h"
#include "Tabs/Todos/LocalTodos.h"
#include "Tabs/Todos/NativeTodos.h"
#include "Tabs/Todos/Todo.h"

#include <QObject>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Clock;
class FileWriter;
class Files;
class QuillboxSource;
class ToolRunner;
struct HubCall;
struct Places;

/// Where the todos are kept: in Velto's own file, in the Quillbox on this machine or on a memory hub, whichever the
/// QuillboxSource is connected to. A change shows in todos() at once and then goes to the store; one that the store refuses is
/// told in error(), and the list is read again. Lives on the UI thread, which waits for no disk.
class TodoKeeper : public QObject {
    Q_OBJECT
public:
    /// What the keeper uses; all of it outlives the keeper.
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Files &files;
        FileWriter &writer;
        const Places &places;
        QuillboxSource &quillbox;
    };
    explicit TodoKeeper(const Needs &needs, QObject *parent = nullptr);
    ~TodoKeeper() override;

    /// All open todos, in the order of the store.
    const QList<Todo> &todos() const { return m_todos; }
    /// A todo of the list; null if it isn't there. Good until the list changes.
    const Todo *find(qint64 id) const;
    /// As find(), or the todo that can still be restored.
    const Todo *standing(qint64 id) const;

    SourceState state() const;
    QString label() const;
    bool canEdit() const;
    bool canAdd() const;
    /// Why the last change failed; empty if it didn't, or if that was dismissed.
    const QString &error() const { return m_error; }
    void dismissError();
    /// Why the list can't reach its store, and the button beside that; empty if it can.
    QString note() const;
    QString noteAction() const;
    void pressNote();

    /// Checks whether the store has changed. A hub reports that by itself.
    void refresh();
    /// Stores a new todo (its number is 0) or a changed one, and returns it, with its number if that is given here. A todo
    /// without a title isn't stored.
    std::optional<Todo> save(const Todo &todo);
    void comment(const Todo &todo, const QString &text);
    /// Takes a todo off the list. The store hears of it after five seconds, with the next done, or when another store takes its
    /// place.
    void done(const Todo &todo);
    void undoDone();
    /// The todo whose done mark can still be undone.
    const std::optional<Todo> &pendingDone() const { return m_pendingDone; }

Q_SIGNALS:
    /// Any of the above may have changed.
    void changed();

private:
    void followStore();
    void takeSnapshot();
    void takeFile(QList<Todo> todos);
    void takeDatabase(const QList<Todo> &todos);
    void setTodos(const QList<Todo> &todos);
    void setError(const QString &error);
    Todo saveNative(Todo todo);
    void keepNative();
    void commitPendingDone();
    QCoro::Task<> tellHub(HubCall call);

    Needs m_needs;
    QuillboxMode m_mode; ///< the store that the list and what is under way belong to
    NativeTodos m_native;
    LocalTodos m_local;
    QList<Todo> m_todos;
    QString m_error;
    std::optional<Todo> m_pendingDone;
    TimerHandle m_undoTime;
};

} // namespace velto
