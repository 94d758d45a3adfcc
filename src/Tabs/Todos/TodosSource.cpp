#include "Tabs/Todos/TodosSource.h"

#include "Core/Texts.h"
#include "Platform/Places.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosKeys.h"

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr int kDaysForComment = 30;

} // namespace

TodosSource::TodosSource(const Needs &needs, QObject *parent)
    : VeltoSource(parent)
    , m_needs(needs)
    , m_keeper(needs)
    , m_shown(needs.clock)
    , m_form(needs.clock)
    , m_keptDraft(needs.files, needs.writer, needs.clock, needs.places.data + "/draft.json"_L1)
    , m_keptComments(needs.files, needs.writer, needs.clock, needs.places.data + "/comments.json"_L1)
{
    connect(&m_keeper, &TodoKeeper::changed, this, &TodosSource::follow);
    connect(&m_shown, &ShownTodos::changed, this, &TodosSource::publish);
    connect(&m_shown, &ShownTodos::draftWanted, this, &TodosSource::newDraft);
    connect(&m_shown, &ShownTodos::commentTyped, this, &TodosSource::keepComment);
    connect(&m_form, &DraftForm::saveWanted, this, &TodosSource::save);
    connect(&m_form, &DraftForm::cancelWanted, this, [this] { setDraft(std::nullopt); });
    for (const Todo &todo : m_keptComments.left()) {
        m_halfComments.insert(todo.id, todo);
        m_unseenComments.insert(todo.id);
    }
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
        m_keptDraft.keep({});
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
    const QList<Todo> left = m_keptDraft.left(); // the todo as it was opened, unless it is a new one, and as it stood in the form
    if (left.isEmpty() || left.size() > 2)
        return;
    const Todo opened = left.size() == 2 ? left.front() : Todo{};
    Todo edited = left.back();
    edited.id = opened.id; // a list gives each todo an id of its own
    m_draft = opened;
    if (opened.id != 0)
        m_draftBase = opened;
    m_restored = true;
    publish();
    m_form.open(opened, edited);
}

void TodosSource::keepDraft()
{
    if (!m_form.shown())
        return;
    m_restored = false;
    if (!m_form.touched())
        m_keptDraft.keep({});
    else if (m_draft->id == 0)
        m_keptDraft.keep({m_form.edited()});
    else
        m_keptDraft.keep({*m_draft, m_form.edited()});
}

void TodosSource::keepComment(const Todo &todo, const QString &text)
{
    m_unseenComments.remove(todo.id);
    if (text.isEmpty()) {
        m_halfComments.remove(todo.id);
    } else {
        Todo &half = m_halfComments[todo.id];
        half.id = todo.id;
        half.title = todo.title;
        half.comments = {{textOf(today(m_needs.clock)), text}};
    }
    m_keptComments.keep(m_halfComments.values());
}

// Another store may use the same number for another todo.
void TodosSource::restoreComments()
{
    m_unseenComments.removeIf([this](qint64 id) {
        const Todo &half = m_halfComments[id];
        const Todo *todo = m_keeper.find(id);
        if (!todo || todo->title != half.title || half.comments.isEmpty())
            return false;
        m_shown.restoreComment(id, half.comments.front().text);
        return true;
    });
}

// A todo that isn't in the list may come back with another store; one that was done elsewhere won't.
void TodosSource::forgetOldComments()
{
    const QString oldest = textOf(today(m_needs.clock).addDays(-kDaysForComment));
    const auto gone = m_unseenComments.removeIf([&](qint64 id) {
        const QList<Comment> half = m_halfComments[id].comments;
        return (half.isEmpty() || half.front().at < oldest) && m_halfComments.remove(id) > 0;
    });
    if (gone > 0)
        m_keptComments.keep(m_halfComments.values());
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
    if (const auto half = m_halfComments.find(saved->id); half != m_halfComments.end() && half->title != saved->title) {
        half->title = saved->title;
        m_keptComments.keep(m_halfComments.values());
    }
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
    if (!todos().isSharedWith(m_list)) {
        m_list = todos();
        ++m_listCount;
        restoreComments(); // before there are rows, which read them once
    }
    if (state() == SourceState::ready())
        forgetOldComments();
    m_shown.setTodos(todos(), state() == SourceState::ready());
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
