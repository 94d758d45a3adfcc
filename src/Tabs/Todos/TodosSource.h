#pragma once

#include "Core/RowModel.h"
#include "Core/SourceState.h"
#include "Core/VeltoSource.h"
#include "Platform/Timer.h"
#include "Tabs/Todos/DraftForm.h"
#include "Tabs/Todos/LocalTodos.h"
#include "Tabs/Todos/NativeTodos.h"
#include "Tabs/Todos/Todo.h"
#include "Tabs/Todos/TodoLists.h"
#include "Tabs/Todos/TodoRows.h"

#include <QAbstractItemModel>
#include <QDateTime>
#include <QJsonObject>
#include <QSet>
#include <optional>
#include <qcoro/qcorotask.h>

namespace velto {

class Background;
class Clock;
class FileWriter;
class Files;
class QuillboxSource;
class ToolRunner;
struct Places;

/// The todos: what is on the list, cut down by scope, date and search; changes to it; and the five seconds in which a done
/// todo can be had back. Where they are kept follows from the mode of the QuillboxSource. Lives on the UI thread, which waits for
/// no disk. Of several readings under way the last one to finish wins; changes reach the Quillbox tool one after the other.
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
    /// What stands between the list and where it is kept, and the button beside it; empty if nothing does.
    Q_PROPERTY(QString storeNote READ storeNote NOTIFY changed FINAL)
    Q_PROPERTY(QString storeAction READ storeAction NOTIFY changed FINAL)
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
    struct Needs {
        Clock &clock;
        Background &background;
        ToolRunner &tools;
        Files &files;
        FileWriter &writer;
        const Places &places;
        QuillboxSource &quillbox;
    };
    explicit TodosSource(const Needs &needs, QObject *parent = nullptr);
    ~TodosSource() override;

    QString title() const override;
    QString symbol() const override;
    /// How many todos are due by today, in all scopes.
    int badge() const override { return m_result.dueNow; }
    QUrl makeView() const override;
    bool takeKey(QKeyCombination key, bool onShow) override;
    /// The form is open.
    bool unfinished() const override { return m_draft.has_value(); }
    void refresh();

    const QList<Todo> &todos() const { return m_lists.todos(); }
    SourceState state() const;
    QString label() const;
    bool canEdit() const;
    /// Whether the keyboard offers a new todo.
    bool canAdd() const;
    QList<Group> groups() const;
    QList<Todo> flat() const;
    /// The todo that the keyboard is on, if the list shows it.
    std::optional<Todo> selected() const;
    QSet<QString> scopesInUse() const { return m_result.scopes; }
    int count(const QString &scope) const { return m_lists.count(scope, m_filter, m_days.today); }
    /// How many todos are overdue, in all scopes.
    int overdueCount() const { return m_result.overdue; }
    QString summary() const { return summaryText(m_result); }
    bool summaryUrgent() const { return m_result.overdueHere > 0; }
    std::optional<QString> error() const { return m_error; }
    const QString &scope() const { return m_scope; }
    void setScope(const QString &scope);
    Filter filter() const { return m_filter; }
    void setFilter(Filter filter);
    const QString &search() const { return m_search; }
    void setSearch(const QString &search);
    int focusSearch() const { return m_focusSearch; }
    std::optional<qint64> openID() const { return m_openID; }
    void setOpenID(std::optional<qint64> id);
    std::optional<qint64> selectedID() const { return m_selectedID; }
    void setSelectedID(std::optional<qint64> id);
    const std::optional<Todo> &draft() const { return m_draft; }
    /// Opens the form on it, or closes the form. A form in which something was typed stays as it is, and takes the focus.
    void setDraft(const std::optional<Todo> &draft);
    const std::optional<Todo> &pendingDone() const { return m_pendingDone; }

    void save(const Todo &todo);
    void comment(const Todo &todo, const QString &text);
    void done(const Todo &todo);

    QAbstractItemModel *scopeRows() { return &m_scopeRows; }
    bool showsScopes() const { return m_result.scopes.size() >= 2; }
    QAbstractItemModel *filterRows() { return &m_filterRows; }
    QString errorText() const { return m_error.value_or(QString()); }
    QString storeNote() const;
    QString storeAction() const;
    QString readOnlyNote() const;
    QString undoText() const;
    DraftForm *form() { return &m_form; }
    QAbstractItemModel *rows() { return &m_rows; }
    int selectedRow() const { return m_selectedRow; }
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
    /// The button of storeNote.
    Q_INVOKABLE void pressStoreNote();
    /// The button of the empty note.
    Q_INVOKABLE void pressEmptyButton();
    /// Opens the form on a new todo.
    Q_INVOKABLE void newDraft();

    // By the id that a row has; a todo that is gone by now is left alone.
    /// The row or its chevron was pressed: selects it, and folds or unfolds it.
    Q_INVOKABLE void press(const QString &id);
    Q_INVOKABLE void edit(const QString &id);
    /// Keeps what is being typed in the comment field of a row, for the role commentText.
    Q_INVOKABLE void typeComment(const QString &id, const QString &text);
    /// Adds the comment, and empties commentText.
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
    /// A row is about to go or to come back by the user's choice, and the others to make room.
    void rowAboutToMove();
    /// The user moved the selection, which is to come into sight.
    void selectionMoved();

private:
    enum class Empty : quint8 { Not, NoMatch, NothingOverdue, NothingNow, NoTodos };
    /// What views see, apart from the rows; compared to tell whether anything has changed.
    struct Published {
        int list = 0;
        SourceState state;
        QString label;
        bool canEdit = false;
        bool canAdd = false;
        QString scope;
        Filter filter = Filter::Today;
        int badge = 0;
        int overdue = 0;
        QString summary;
        std::optional<QString> error;
        QString storeNote;
        QString readOnlyNote;
        std::optional<Todo> pendingDone;
        bool hasDraft = false;
        QString emptyText;

        bool operator==(const Published &) const = default;
    };

    void quillboxChanged();
    void takeSnapshot();
    void takeFile(QList<Todo> todos);
    void readDatabase();
    void watchDatabase();
    std::optional<QDateTime> databaseStamp() const;
    void awaitMidnight();
    void setTodos(const QList<Todo> &todos);
    void setError(const std::optional<QString> &error);
    void publish();
    void publishSegments();
    void publishSelection();
    Empty emptiness() const;
    Todo emptyDraft() const;
    const Todo *find(qint64 id) const;
    std::optional<Todo> byRow(const QString &id) const;
    Todo onStanding(const Todo &edited) const;
    void showNew(const Todo &todo);
    Todo saveNative(Todo todo);
    void keepNative();
    void commitPendingDone();
    void write(const QStringList &args);
    void startWrite();
    QCoro::Task<> hubWrite(QString path, QJsonObject json);

    Needs m_needs;
    LocalTodos m_local;
    NativeTodos m_native;
    bool m_localPatched = false;
    TodoLists m_lists;
    TodoLists::Result m_result;
    std::optional<TodoLists::Cut> m_cut; ///< what m_result was made for; nothing if the list is another one by now
    int m_listCount = 0; ///< counts the lists
    Days m_days;
    std::optional<QString> m_error;
    QString m_scope = QStringLiteral("office");
    Filter m_filter = Filter::Today;
    QString m_search;
    std::optional<qint64> m_openID;
    std::optional<Todo> m_draft;
    std::optional<Todo> m_draftBase; ///< how the todo stood in the list when the form was opened on it
    std::optional<qint64> m_selectedID;
    int m_selectedRow = -1;
    int m_focusSearch = 0;
    bool m_wasMissing = false;
    std::optional<QDateTime> m_dbStamp; ///< of the database as it was last read
    int m_dbReadings = 0; ///< under way
    std::optional<QString> m_dbProblem; ///< why the last one failed
    std::optional<Todo> m_pendingDone;
    QList<QStringList> m_writes; ///< what the tool is yet to be told
    bool m_writing = false;
    DraftForm m_form;
    TodoRows m_rows;
    RowModel m_scopeRows;
    RowModel m_filterRows;
    Published m_published;
    TimerHandle m_doneTask;
    TimerHandle m_todoWatch;
    TimerHandle m_midnight;
};

} // namespace velto
