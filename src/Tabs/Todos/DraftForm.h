#pragma once

#include "Core/DateModel.h"
#include "Core/RowModel.h"
#include "Tabs/Todos/Todo.h"

#include <QObject>
#include <optional>

namespace velto {

class Clock;

/// The form for a new or a changed todo. It works on a copy and hands it over when the user is done. UI thread only.
class DraftForm : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool shown READ shown NOTIFY shownChanged FINAL)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed FINAL)
    Q_PROPERTY(QString details READ details WRITE setDetails NOTIFY changed FINAL)
    Q_PROPERTY(QString who READ who WRITE setWho NOTIFY changed FINAL)
    Q_PROPERTY(QString project READ project WRITE setProject NOTIFY changed FINAL)
    Q_PROPERTY(bool hasDate READ hasDate WRITE setHasDate NOTIFY changed FINAL)
    Q_PROPERTY(velto::DateModel *date READ date CONSTANT FINAL)
    /// The segments of "Priority": value (what choosePriority() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *priorities READ priorities CONSTANT FINAL)
    /// The segments of "List": value (what chooseScope() takes), text, selected.
    Q_PROPERTY(QAbstractItemModel *scopes READ scopes CONSTANT FINAL)
    /// Person, project and notes are on show.
    Q_PROPERTY(bool more READ more NOTIFY changed FINAL)
    Q_PROPERTY(bool showsScope READ showsScope NOTIFY changed FINAL)
    Q_PROPERTY(QString moreText READ moreText NOTIFY changed FINAL)
    Q_PROPERTY(QString saveText READ saveText NOTIFY changed FINAL)
public:
    explicit DraftForm(const Clock &clock, QObject *parent = nullptr);

    bool shown() const { return m_shown; }
    /// Opens the form on a copy of `draft`.
    void open(const Todo &draft) { open(draft, draft); }
    /// The same with what was changed in it already.
    void open(const Todo &draft, const Todo &edited);
    void close();
    /// Something was changed since the form was opened.
    bool touched() const;
    /// What stands in the form now.
    Todo edited() const;

    QString title() const { return m_d.title; }
    void setTitle(const QString &title);
    QString details() const { return m_d.details; }
    void setDetails(const QString &details);
    QString who() const { return m_d.who; }
    void setWho(const QString &who);
    QString project() const { return m_d.project; }
    void setProject(const QString &project);
    bool hasDate() const { return m_hasDate; }
    void setHasDate(bool hasDate);
    DateModel *date() { return &m_date; }
    QAbstractItemModel *priorities() { return &m_priorities; }
    QAbstractItemModel *scopes() { return &m_scopes; }
    bool more() const { return m_more; }
    bool showsScope() const;
    QString moreText() const;
    QString saveText() const;

    Q_INVOKABLE void choosePriority(const QString &value);
    Q_INVOKABLE void chooseScope(const QString &value);
    Q_INVOKABLE void toggleMore();
    /// Hands the todo over. A date that can't be read is asked for again first.
    Q_INVOKABLE void save();
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    /// The user is done with the form.
    void saveWanted(const velto::Todo &todo);
    void cancelWanted();
    void shownChanged();
    /// The content of the form has changed. Typing emits it too.
    void changed();
    /// The title field should take the focus: the form was opened, or asked for while it was open.
    void titleFocusWanted();
    /// The date should take the focus: what is typed there isn't one.
    void dateFocusWanted();

private:
    template <typename Value> void set(Value &field, const Value &value);
    void update();

    const Clock &m_clock;
    bool m_shown = false;
    Todo m_d;
    bool m_hasDate = false;
    DateModel m_date;
    bool m_more = false;
    Todo m_opened; ///< as it stood when the form was opened
    QDate m_openedDate;
    RowModel m_priorities;
    RowModel m_scopes;
};

} // namespace velto
