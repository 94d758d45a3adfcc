#include "Tabs/Todos/DraftForm.h"

#include "Core/Texts.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velto {

DraftForm::DraftForm(const Clock &clock, QObject *parent)
    : QObject(parent)
    , m_clock(clock)
    , m_date(clock)
    , m_priorities({"value", "text", "selected"})
    , m_scopes({"value", "text", "selected"})
{
    connect(&m_date, &DateModel::changed, this, &DraftForm::changed);
    update();
}

void DraftForm::open(const Todo &draft, const Todo &edited)
{
    const auto dateOf = [this](const Todo &todo) {
        const QDate due = dayOf(todo.due);
        return due.isValid() ? due : today(m_clock);
    };
    m_d = edited;
    m_opened = draft;
    m_hasDate = !edited.due.isEmpty();
    m_date.setDate(dateOf(edited));
    m_openedDate = dateOf(draft);
    m_more = draft.id != 0 || edited.details != draft.details || edited.who != draft.who || edited.project != draft.project;
    update();
    if (!std::exchange(m_shown, true))
        Q_EMIT shownChanged();
    Q_EMIT titleFocusWanted();
}

void DraftForm::close()
{
    if (std::exchange(m_shown, false))
        Q_EMIT shownChanged();
}

bool DraftForm::touched() const
{
    return m_d != m_opened || m_hasDate == m_opened.due.isEmpty() || m_date.date() != m_openedDate;
}

Todo DraftForm::edited() const
{
    Todo todo = m_d;
    todo.due = m_hasDate ? textOf(m_date.date()) : QString();
    return todo;
}

template <typename Value> void DraftForm::set(Value &field, const Value &value)
{
    if (field == value)
        return;
    field = value;
    update();
}

void DraftForm::setTitle(const QString &title)
{
    set(m_d.title, title);
}

void DraftForm::setDetails(const QString &details)
{
    set(m_d.details, details);
}

void DraftForm::setWho(const QString &who)
{
    set(m_d.who, who);
}

void DraftForm::setProject(const QString &project)
{
    set(m_d.project, project);
}

void DraftForm::setHasDate(bool hasDate)
{
    set(m_hasDate, hasDate);
}

bool DraftForm::showsScope() const
{
    return m_more || m_d.scope != "office"_L1;
}

QString DraftForm::moreText() const
{
    return m_more ? tr("Fewer details") : tr("More details");
}

QString DraftForm::saveText() const
{
    return m_d.id != 0 ? tr("Save") : tr("Add todo");
}

void DraftForm::choosePriority(const QString &value)
{
    set(m_d.prio, value.toLongLong());
}

void DraftForm::chooseScope(const QString &value)
{
    set(m_d.scope, value);
}

void DraftForm::toggleMore()
{
    m_more = !m_more;
    update();
}

void DraftForm::save()
{
    if (m_hasDate && m_date.unreadable()) {
        Q_EMIT dateFocusWanted();
        return;
    }
    Q_EMIT saveWanted(edited());
}

void DraftForm::cancel()
{
    Q_EMIT cancelWanted();
}

void DraftForm::update()
{
    const std::array priorities{std::pair{1, tr("High")}, std::pair{2, tr("Normal")}, std::pair{3, tr("Low")}};
    QList<RowModel::Row> rows;
    for (const auto &[value, text] : priorities)
        rows.append({QString::number(value), text, m_d.prio == value});
    m_priorities.setRows(rows);
    m_scopes.setRows({
        {u"office"_s, tr("Work"), m_d.scope == "office"_L1},
        {u"personal"_s, tr("Personal"), m_d.scope == "personal"_L1},
    });
    Q_EMIT changed();
}

} // namespace velto
