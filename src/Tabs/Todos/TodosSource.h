#pragma once

#include "Core/VeltoSource.h"
#include "Tabs/Todos/DraftForm.h"
#include "Tabs/Todos/KeptTodos.h"
#include "Tabs/Todos/ShownTodos.h"
#include "Tabs/Todos/TodoKeeper.h"

#include <QMap>
#include <QSet>
#include <optional>

namespace velto {

/// The tab of the todos: the TodoKeeper has them, ShownTodos is the list that the user sees, and here the two meet with the form,
/// the notes above the list, and the five seconds in which a done todo can be had back. UI thread only.
class TodosSource : public VeltoSource {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState state READ state NOTIFY changed FINAL)
    Q_PROPERTY(QString label READ label NOTIFY changed FINAL)
    /// An open row offers its comment field and "Edit".
    Q_PROPERTY(bool canEdit READ canEdit NOTIFY changed FINAL)
    Q_PROPERTY(velto::ShownTodos *shown READ shown CONSTANT FINAL)
    Q_PROPERTY(velto::DraftForm *form READ form CONSTANT FINAL)

    /// The text of the error banner; empty for none.
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)
    /// Why the list can't reach its store, and the button beside that; empty if it can.
    Q_PROPERTY(QString storeNote READ storeNote NOTIFY changed FINAL)
    Q_PROPERTY(QString storeAction READ storeAction NOTIFY changed FINAL)
    /// Why nothing can be edited here; empty if it can.
    Q_PROPERTY(QString readOnlyNote READ readOnlyNote NOTIFY changed FINAL)
    /// The text of the undo bar; empty for none.
    Q_PROPERTY(QString undoText READ undoText NOTIFY changed FINAL)
public:
    using Needs = TodoKeeper::Needs;
    explicit TodosSource(const Needs &needs, QObject *parent = nullptr);
    ~TodosSource() override;

    QString title() const override;
    QString symbol() const override;
    /// How many todos are due by today, in all scopes.
    int badge() const override { return m_shown.dueCount(); }
    QUrl makeView() const override;
    bool takeKey(QKeyCombination key, bool onShow) override;
    /// The form is open, and not only because the last run ended with it.
    bool unfinished() const override { return m_draft && !m_restored; }
    void refresh();

    const QList<Todo> &todos() const { return m_keeper.todos(); }
    SourceState state() const { return m_keeper.state(); }
    QString label() const { return m_keeper.label(); }
    bool canEdit() const { return m_keeper.canEdit(); }
    /// Whether the keyboard offers a new todo.
    bool canAdd() const { return m_keeper.canAdd(); }
    /// How many todos are overdue, in all scopes.
    int overdueCount() const { return m_shown.overdueCount(); }
    ShownTodos *shown() { return &m_shown; }
    const ShownTodos *shown() const { return &m_shown; }
    DraftForm *form() { return &m_form; }
    const std::optional<Todo> &draft() const { return m_draft; }
    /// Opens the form on it, or closes the form. A form in which something was typed stays as it is, and takes the focus.
    void setDraft(const std::optional<Todo> &draft);
    const std::optional<Todo> &pendingDone() const { return m_keeper.pendingDone(); }

    void save(const Todo &todo);
    void comment(const Todo &todo, const QString &text) { m_keeper.comment(todo, text); }
    void done(const Todo &todo);

    QString errorText() const { return m_keeper.error(); }
    QString storeNote() const { return m_keeper.note(); }
    QString storeAction() const { return m_keeper.noteAction(); }
    QString readOnlyNote() const;
    QString undoText() const;

    /// "Try again" of the state's banner.
    Q_INVOKABLE void retry();
    Q_INVOKABLE void dismissError() { m_keeper.dismissError(); }
    /// The button of storeNote.
    Q_INVOKABLE void pressStoreNote() { m_keeper.pressNote(); }
    /// Opens the form on a new todo.
    Q_INVOKABLE void newDraft();
    Q_INVOKABLE void undoDone();

    // By the id that a row has; a todo that is gone by now is left alone.
    Q_INVOKABLE void edit(const QString &id);
    /// Adds the comment, and clears commentText.
    Q_INVOKABLE void addComment(const QString &id, const QString &text);
    Q_INVOKABLE void finish(const QString &id);
    /// Marks the selected todo done, and selects the next one.
    void finishSelected();

Q_SIGNALS:
    /// The search field should take the focus.
    void searchFocusWanted();
    /// A row is about to go or come back at the user's request, and the others to make room.
    void rowAboutToMove();

private:
    /// Kept to detect whether anything has changed.
    struct Published {
        int list = 0;
        SourceState state;
        QString label;
        bool canEdit = false;
        bool canAdd = false;
        int badge = 0;
        int overdue = 0;
        QString error;
        QString storeNote;
        QString readOnlyNote;
        std::optional<Todo> pendingDone;
        bool hasDraft = false;

        bool operator==(const Published &) const = default;
    };

    void follow();
    void restoreDraft();
    void keepDraft();
    void restoreComments();
    void forgetOldComments();
    void keepComment(const Todo &todo, const QString &text);
    void publish();
    Todo onStanding(const Todo &edited) const;

    Needs m_needs;
    TodoKeeper m_keeper;
    ShownTodos m_shown;
    DraftForm m_form;
    KeptTodos m_keptDraft;
    KeptTodos m_keptComments;
    /// The todos with a comment that is being typed, which is the only one each has here.
    QMap<qint64, Todo> m_halfComments;
    QSet<qint64> m_unseenComments; ///< those of the last run whose todo no list has had yet
    bool m_restored = false; ///< m_draft is of the last run, and untouched since
    std::optional<Todo> m_draft;
    std::optional<Todo> m_draftBase; ///< how the todo stood in the list when the form was opened on it
    QList<Todo> m_list; ///< that was published last
    int m_listCount = 0; ///< counts the lists
    Published m_published;
};

} // namespace velto
