#pragma once

#include "Core/RowModel.h"
#include "Core/SourceState.h"
#include "Core/VeltoSource.h"
#include "Platform/Clock.h"
#include "Tabs/Todos/DraftForm.h"
#include "Tabs/Todos/Todo.h"
#include "Tabs/Todos/TodoRows.h"

#include <QAbstractItemModel>
#include <QSet>
#include <memory>
#include <optional>

namespace velto {

class QuillboxSource;

/// The todos: what is on the list, cut down by scope, date and search; changes to it; and the five seconds in which a done
/// todo can be had back. Lives on the UI thread.
class TodosSource : public VeltoSource {
    Q_OBJECT
    Q_PROPERTY(velto::SourceState state READ state NOTIFY changed FINAL)
    Q_PROPERTY(QString label READ label NOTIFY changed FINAL)
    /// An open row offers its comment field and "Edit".
    Q_PROPERTY(bool canEdit READ canEdit NOTIFY changed FINAL)

    /// The segments of "List": value (what chooseScope() takes), text with its count, selected.
    Q_PROPERTY(QAbstractItemModel *scopes READ scopeRows CONSTANT FINAL)
    Q_PROPERTY(bool showsScopes READ showsScopes NOTIFY changed FINAL)
    /// The segments of "Show": value (what chooseFilter() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *filters READ filterRows CONSTANT FINAL)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged FINAL)
    /// Each change asks the view to focus the search field.
    Q_PROPERTY(int focusSearch READ focusSearch NOTIFY focusSearchChanged FINAL)

    Q_PROPERTY(QString summary READ summary NOTIFY changed FINAL)
    /// The summary is red: something in this scope is overdue.
    Q_PROPERTY(bool summaryUrgent READ summaryUrgent NOTIFY changed FINAL)
    /// The text of the error banner; empty for none.
    Q_PROPERTY(QString errorText READ errorText NOTIFY changed FINAL)
    /// Why nothing can be edited here; empty if it can.
    Q_PROPERTY(QString readOnlyNote READ readOnlyNote NOTIFY changed FINAL)
    /// The text of the undo bar; empty for none.
    Q_PROPERTY(QString undoText READ undoText NOTIFY changed FINAL)
    Q_PROPERTY(velto::DraftForm *form READ form CONSTANT FINAL)

    /// Headings and todos, see TodoRows for the roles.
    Q_PROPERTY(QAbstractItemModel *rows READ rows CONSTANT FINAL)
    /// The place of the selected row, which is kept on screen; -1 if it isn't in the list.
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY selectionChanged FINAL)
    /// What stands in place of an empty list; the text is empty if nothing does, the button's if there is no button.
    Q_PROPERTY(QString emptySymbol READ emptySymbol NOTIFY changed FINAL)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed FINAL)
    Q_PROPERTY(QString emptyButton READ emptyButton NOTIFY changed FINAL)
public:
    struct Group {
        QString project; ///< "other" for the todos without one
        QList<Todo> todos;
    };

    /// What the source leans on; all of it outlives the source.
    struct Needs;
    explicit TodosSource(const Needs &needs, QObject *parent = nullptr);
    ~TodosSource() override;

    QString title() const override;
    QString symbol() const override;
    /// How many todos are due by today, in all scopes.
    int badge() const override;
    QUrl makeView() const override;
    void refresh();

    const QList<Todo> &todos() const;
    SourceState state() const;
    QString label() const;
    bool canEdit() const;
    /// Whether a new todo can be had with the keyboard.
    bool canAdd() const;
    QList<Group> groups() const;
    QList<Todo> flat() const;
    /// The todo that the keyboard is on, if the list shows it.
    std::optional<Todo> selected() const;
    QSet<QString> scopesInUse() const;
    int count(const QString &scope) const;
    /// How many todos are overdue, in all scopes.
    int overdueCount() const;
    QString summary() const;
    bool summaryUrgent() const;
    std::optional<QString> error() const;
    QString scope() const;
    void setScope(const QString &scope);
    Filter filter() const;
    void setFilter(Filter filter);
    QString search() const;
    void setSearch(const QString &search);
    int focusSearch() const;
    std::optional<qint64> openID() const;
    void setOpenID(std::optional<qint64> id);
    std::optional<qint64> selectedID() const;
    void setSelectedID(std::optional<qint64> id);
    std::optional<Todo> draft() const;
    /// Opens the form on it, or closes the form. A form in which something was typed stays as it is, and takes the focus.
    void setDraft(const std::optional<Todo> &draft);
    std::optional<Todo> pendingDone() const;

    void save(const Todo &todo);
    void comment(const Todo &todo, const QString &text);
    void done(const Todo &todo);

    QAbstractItemModel *scopeRows();
    bool showsScopes() const;
    QAbstractItemModel *filterRows();
    QString errorText() const;
    QString readOnlyNote() const;
    QString undoText() const;
    DraftForm *form();
    QAbstractItemModel *rows();
    int selectedRow() const;
    QString emptySymbol() const;
    QString emptyText() const;
    QString emptyButton() const;

    /// The tab came on show.
    Q_INVOKABLE void appeared();
    Q_INVOKABLE void chooseScope(const QString &value);
    Q_INVOKABLE void chooseFilter(const QString &value);
    Q_INVOKABLE void askForSearch();
    /// "Try again" of the state's banner.
    Q_INVOKABLE void retry();
    Q_INVOKABLE void dismissError();
    /// The button of the empty note.
    Q_INVOKABLE void pressEmptyButton();
    /// Opens the form on a new todo.
    Q_INVOKABLE void newDraft();

    // By the id that a row has; a todo that is gone by now is left alone.
    /// The row or its chevron was pressed: selects it, and folds or unfolds it.
    Q_INVOKABLE void press(const QString &id);
    Q_INVOKABLE void edit(const QString &id);
    Q_INVOKABLE void addComment(const QString &id, const QString &text);
    Q_INVOKABLE void finish(const QString &id);
    Q_INVOKABLE void undoDone();

    // The keyboard.
    /// Moves the selection, without a turn at either end.
    Q_INVOKABLE void move(int by);
    Q_INVOKABLE void toggleSelected();
    Q_INVOKABLE void finishSelected();

Q_SIGNALS:
    void searchChanged();
    void focusSearchChanged();
    void selectionChanged();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace velto
