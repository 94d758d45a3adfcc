#include "Tabs/Todos/TodoLists.h"

#include "Core/Words.h"

#include <QStringMatcher>
#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Separates the texts of one todo; nobody types it.
constexpr QChar kBetween(0xFFFF);

/// Lower case; for ASCII without the Unicode tables, since the first key of a search waits for every text.
QString lowered(QString text)
{
    const auto isAscii = [](QChar c) { return c.unicode() < 0x80 || c == kBetween; };
    if (!std::all_of(text.cbegin(), text.cend(), isAscii))
        return text.toLower();
    for (QChar &c : text)
        c = c >= u'A' && c <= u'Z' ? QChar(char16_t(c.unicode() | 0x20)) : c;
    return text;
}

QString searchedText(const Todo &todo)
{
    QString text;
    text.reserve(todo.title.size() + todo.details.size() + todo.who.size() + todo.project.size() + 32);
    for (const QString *each : {&todo.title, &todo.details, &todo.who, &todo.project})
        (text += *each) += kBetween;
    return lowered(text += u'#' + QString::number(todo.id));
}

} // namespace

bool matches(const Todo &todo, const QString &search)
{
    return search.isEmpty() || (!search.contains(kBetween) && searchedText(todo).contains(search.toLower()));
}

void TodoLists::setTodos(const QList<Todo> &todos)
{
    m_todos = todos;
    m_order.clear();
    m_kept.reset();
    m_texts.clear();
}

const QList<qsizetype> &TodoLists::order()
{
    if (m_order.size() == m_todos.size())
        return m_order;
    const QString none = u"9999"_s;
    const auto due = [&none](const Todo &todo) -> const QString & { return todo.due.isEmpty() ? none : todo.due; };
    m_order.resize(m_todos.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    std::stable_sort(m_order.begin(), m_order.end(), [&, todos = m_todos.constData()](qsizetype left, qsizetype right) {
        const Todo &a = todos[left];
        const Todo &b = todos[right];
        if (a.prio != b.prio)
            return a.prio < b.prio;
        if (due(a) != due(b))
            return sortsBefore(due(a), due(b));
        return a.id < b.id;
    });
    return m_order;
}

TodoLists::Kept TodoLists::pass(const Cut &cut)
{
    Kept kept{cut, {}, {}, {}, {}};
    Totals &totals = kept.totals;
    for (const qsizetype place : order()) {
        const Todo &todo = m_todos.at(place);
        const bool dueNow = todo.dueNow(cut.today);
        const bool overdue = dueNow && todo.due != cut.today;
        totals.dueNow += dueNow;
        totals.overdue += overdue;
        totals.scopes.insert(todo.scope);
        if (todo.scope != cut.scope)
            continue;
        ++totals.here;
        totals.dueHere += dueNow;
        totals.overdueHere += overdue;
        totals.highHere += dueNow && todo.prio == 1;
        if (passes(cut.filter, todo, cut.today))
            kept.passed.append(place);
    }
    kept.found = kept.passed;
    return kept;
}

void TodoLists::search(const QString &search)
{
    if (!search.contains(std::exchange(m_kept->search, search)))
        m_kept->found = m_kept->passed;
    if (search.isEmpty()) {
        m_texts.clear();
        return;
    }
    if (m_texts.size() != m_todos.size()) {
        m_texts.clear();
        m_texts.reserve(m_todos.size());
        for (const Todo &todo : std::as_const(m_todos))
            m_texts.append(searchedText(todo));
    }
    m_kept->found.removeIf([&, searcher = QStringMatcher(search), never = search.contains(kBetween)](qsizetype place) {
        return never || searcher.indexIn(m_texts.at(place)) < 0;
    });
}

TodoLists::Result TodoLists::cut(const Cut &cut)
{
    const Cut unsearched{cut.scope, cut.filter, {}, cut.today};
    if (!m_kept || m_kept->cut != unsearched)
        m_kept = pass(unsearched);
    search(cut.search.toLower());
    Result result{m_kept->totals, {}};
    QHash<QString, qsizetype> buckets;
    for (const qsizetype place : std::as_const(m_kept->found)) {
        const QString &itsProject = m_todos.at(place).project;
        const QString project = itsProject.isEmpty() ? u"other"_s : itsProject;
        const qsizetype bucket = buckets.value(project, result.groups.size());
        if (bucket == result.groups.size()) {
            buckets.insert(project, bucket);
            result.groups.append({project, {}});
        }
        result.groups[bucket].todos.append(place);
    }
    return result;
}

int TodoLists::count(const QString &scope, Filter filter, const QString &today) const
{
    return int(
        std::ranges::count_if(m_todos, [&](const Todo &todo) { return todo.scope == scope && passes(filter, todo, today); }));
}

QString summaryText(const TodoLists::Totals &totals)
{
    QStringList pieces;
    pieces += totals.dueHere == 0 ? Words::tr("Nothing due today") : Words::tr("%1 due today").arg(totals.dueHere);
    if (totals.overdueHere > 0)
        pieces += Words::tr("%1 overdue").arg(totals.overdueHere);
    if (totals.highHere > 0)
        pieces += Words::tr("%1 high priority").arg(totals.highHere);
    return pieces.join(u" · "_s);
}

} // namespace velto
