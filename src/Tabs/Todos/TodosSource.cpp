#include "Tabs/Todos/TodosSource.h"

#include "Core/Texts.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosKeys.h"

using namespace Qt::StringLiterals;

namespace velto {

TodosSource::TodosSource(const Needs &needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(needs)
    , m_keeper(needs)
    , m_shown(needs.clock)
    , m_form(needs.clock)
    , m_kept(needs.files, needs.writer, needs.clock, needs.places)
{
    connect(&m_keeper, &TodoKeeper::changed, this, &TodosSource::follow);
    connect(&m_shown, &ShownTodos::changed, this, &TodosSource::publish);
    connect(&m_shown, &ShownTodos::draftWanted, this, &TodosSource::newDraft);
    connect(&m_form, &DraftForm::saveWanted, this, &TodosSource::save);
    connect(&m_form, &DraftForm::cancelWanted, this, [this] { setDraft(std::nullopt); });
    follow();
    restoreDraft();
    connect(&m_form, &DraftForm::changed, this, &TodosSource::keepDraft);
}

TodosSource::~TodosSource() = default;

QString TodosSource::title() const
{
    return tr("Todos");
}

QString TodosSource::symbol() const
{
    return u"checklist"_s;
}

QUrl TodosSource::makeView() const
{
    return QUrl(u"qrc:/qt/qml/Velto/Todos/TodosView.qml"_s);
}

bool TodosSource::takeKey(QKeyCombination key, bool onShow)
{
    return takeTodosKey(*this, key, onShow);
}

void TodosSource::refresh()
{
    m_shown.update();
    m_keeper.refresh();
}

void TodosSource::retry()
{
    m_needs.quillbox.fetchAgain();
}

QString TodosSource::readOnlyNote() const
{
    return canAdd() ? QString()
                    : tr("Read-only: to add, edit and comment from Velto, install the todo.py from integrations/quillbox. "
                         "Marking done works.");
}

QString TodosSource::undoText() const
{
    return pendingDone() ? tr("Done: %1").arg(pendingDone()->title) : QString();
}

void TodosSource::setDraft(const std::optional<Todo> &draft)
{
    if (draft && m_form.shown() && m_form.touched()) {
        Q_EMIT m_form.titleFocusWanted();
        return;
    }
    m_draft = draft;
    m_restored = false;
    if (!draft)
        m_kept.forget();
    const Todo *base = draft ? m_keeper.find(draft->id) : nullptr;
    m_draftBase = base ? std::optional(*base) : std::nullopt;
    publish();
    if (m_draft)
        m_form.open(*m_draft);
    else
        m_form.close();
}

void TodosSource::restoreDraft()
{
    const auto left = m_kept.left();
    if (!left)
        return;
    m_draft = left->opened;
    if (left->opened.id != 0)
        m_draftBase = left->opened;
    m_restored = true;
    publish();
    m_form.open(left->opened, left->edited);
}

void TodosSource::keepDraft()
{
    if (!m_form.shown())
        return;
    m_restored = false;
    if (m_form.touched())
        m_kept.keep({*m_draft, m_form.edited()});
    else
        m_kept.forget();
}

void TodosSource::newDraft()
{
    Todo todo;
    todo.due = textOf(today(m_needs.clock));
    todo.scope = m_shown.scope();
    setDraft(todo);
}

void TodosSource::edit(const QString &id)
{
    if (const auto todo = m_shown.byRow(id))
        setDraft(todo);
}

void TodosSource::save(const Todo &todo)
{
    const std::optional<Todo> saved = m_keeper.save(onStanding(todo));
    if (!saved)
        return;
    setDraft(std::nullopt);
    if (todo.id == 0)
        m_shown.reveal(*saved);
}

// The form holds the todo as it was when it was opened. A comment, or another program, may have changed the rest since.
Todo TodosSource::onStanding(const Todo &edited) const
{
    const Todo *standing = m_keeper.standing(edited.id);
    return standing && m_draftBase && m_draftBase->id == edited.id ? merged(*standing, *m_draftBase, edited) : edited;
}

void TodosSource::addComment(const QString &id, const QString &text)
{
    if (const auto todo = m_shown.byRow(id)) {
        comment(*todo, text);
        m_shown.typeComment(id, {});
    }
}

void TodosSource::done(const Todo &todo)
{
    Q_EMIT rowAboutToMove();
    m_keeper.done(todo);
}

void TodosSource::undoDone()
{
    Q_EMIT rowAboutToMove();
    m_keeper.undoDone();
}

void TodosSource::finish(const QString &id)
{
    if (const auto todo = m_shown.byRow(id))
        done(*todo);
}

void TodosSource::finishSelected()
{
    if (const auto todo = m_shown.selected()) {
        done(*todo);
        m_shown.move(1);
    }
}

void TodosSource::follow()
{
    m_shown.setTodos(todos(), state() == SourceState::ready());
    if (!todos().isSharedWith(m_list)) {
        m_list = todos();
        ++m_listCount;
    }
    publish();
}

void TodosSource::publish()
{
    Published now{m_listCount,    state(),     label(),     canEdit(),      canAdd(),      badge(),
                  overdueCount(), errorText(), storeNote(), readOnlyNote(), pendingDone(), m_draft.has_value()};
    if (now == m_published)
        return;
    m_published = std::move(now);
    Q_EMIT changed();
}

} // namespace velto
