#include "Core/LongestRun.h"
#include "Tabs/Todos/TodoRows.h"

#include <algorithm>

// A new list is reached as in RowModel: remove what went, move what is out of order, insert what came, tell what changed. Two
// things are different, for lists of many thousands. What both lists begin and end with is left out of the comparison. And
// where a step for each difference would be too many for a view, as with another filter, the rows are exchanged as a block, all
// but the one that the user has open.

namespace velto {

namespace {

/// More steps than this cost a view more than new rows do.
constexpr qsizetype kMostSteps = 100;

using Content = TodoRows::Content;

bool sameId(const Content &a, qsizetype i, const Content &b, qsizetype j)
{
    const TodoRows::Row &left = a.rows[i];
    const TodoRows::Row &right = b.rows[j];
    if (left.isHeading() || right.isHeading())
        return left.isHeading() && right.isHeading() && a.projects[left.project] == b.projects[right.project];
    return a.todos[left.todo].id == b.todos[right.todo].id;
}

/// The id of a row with the number of rows of the same id before it.
struct Key {
    std::optional<QString> project;
    qint64 todo = 0;
    int number = 0;

    bool operator==(const Key &) const = default;
};

size_t qHash(const Key &key, size_t seed = 0)
{
    return key.project ? qHashMulti(seed, *key.project, key.number) : qHashMulti(seed, key.todo, key.number);
}

template <typename Take> void forEachKey(const Content &content, qsizetype from, qsizetype end, Take take)
{
    QHash<Key, int> seen;
    for (qsizetype i = from; i < end; ++i) {
        const TodoRows::Row &row = content.rows[i];
        Key key;
        if (row.isHeading())
            key.project = content.projects[row.project];
        else
            key.todo = content.todos[row.todo].id;
        key.number = seen[key]++;
        take(key, i);
    }
}

/// How often a list of row numbers breaks off.
qsizetype breaks(const QList<qsizetype> &places)
{
    qsizetype count = 0;
    for (qsizetype i = 0; i < places.size(); ++i)
        count += i == 0 || places[i] != places[i - 1] + 1;
    return count;
}

/// How many removals, moves and insertions lead to these rows.
qsizetype stepsTo(const QList<qsizetype> &origins, qsizetype from, qsizetype oldEnd)
{
    QList<qsizetype> staying;
    QList<qsizetype> fresh;
    for (qsizetype i = 0; i < origins.size(); ++i) {
        if (origins[i] >= 0)
            staying.append(origins[i]);
        else
            fresh.append(i);
    }
    const auto inOrder = longestIncreasing(staying);
    std::ranges::sort(staying);
    QList<qsizetype> gone;
    for (qsizetype i = from, next = 0; i < oldEnd; ++i) {
        if (next < staying.size() && staying[next] == i)
            ++next;
        else
            gone.append(i);
    }
    return breaks(gone) + breaks(fresh) + std::ranges::count(inOrder, false);
}

} // namespace

void TodoRows::setContent(const Content &content, const Days &days)
{
    const qsizetype shorter = std::min(m_content.rows.size(), content.rows.size());
    qsizetype from = 0;
    while (from < shorter && sameId(m_content, from, content, from))
        ++from;
    qsizetype oldEnd = m_content.rows.size();
    qsizetype newEnd = content.rows.size();
    while (oldEnd > from && newEnd > from && sameId(m_content, oldEnd - 1, content, newEnd - 1)) {
        --oldEnd;
        --newEnd;
    }
    Origins origins = originsOf(content, from, oldEnd, newEnd);
    if (stepsTo(origins, from, oldEnd) > kMostSteps)
        keepAnchor(origins);
    const std::vector<bool> changed = changesTo(content, days, from, origins);
    removeAllBut(origins, from, oldEnd);
    m_days = days;
    reorder(adopt(content, from, origins), from);
    insertNew(content, from, origins);
    announce(changed);
}

/// For each new row between the common beginning and the common end, the old row that it was; -1 if it is new.
TodoRows::Origins TodoRows::originsOf(const Content &content, qsizetype from, qsizetype oldEnd, qsizetype newEnd) const
{
    QHash<Key, qsizetype> places;
    forEachKey(m_content, from, oldEnd, [&](const Key &key, qsizetype place) { places.insert(key, place); });
    Origins origins;
    origins.reserve(newEnd - from);
    forEachKey(content, from, newEnd, [&](const Key &key, qsizetype) { origins.append(places.value(key, -1)); });
    return origins;
}

void TodoRows::keepAnchor(Origins &origins) const
{
    const int open = placeOf(m_open);
    const int selected = placeOf(m_selected);
    const int anchor = open >= 0 && origins.contains(open) ? open : selected;
    for (qsizetype &origin : origins)
        origin = origin == anchor ? origin : -1;
}

/// Which of the new rows stood there before and say something else now.
std::vector<bool> TodoRows::changesTo(const Content &content, const Days &days, qsizetype from, const Origins &origins) const
{
    const bool sameDay = days == m_days;
    const bool sameTodos = content.todos.isSharedWith(m_content.todos);
    const qsizetype shift = m_content.rows.size() - content.rows.size();
    std::vector<bool> changed(std::size_t(content.rows.size()), false);
    for (qsizetype i = 0; i < content.rows.size(); ++i) {
        const bool inMiddle = i >= from && i < from + origins.size();
        const qsizetype old = i < from ? i : inMiddle ? origins[i - from] : i + shift;
        if (old < 0 || content.rows[i].isHeading())
            continue;
        const qsizetype before = m_content.rows[old].todo;
        const qsizetype now = content.rows[i].todo;
        const bool same = (sameTodos && before == now) || m_content.todos[before] == content.todos[now];
        changed[std::size_t(i)] = !same || !sameDay;
    }
    return changed;
}

void TodoRows::removeAllBut(const Origins &origins, qsizetype from, qsizetype oldEnd)
{
    std::vector<bool> stays(std::size_t(oldEnd - from), false);
    for (const qsizetype origin : origins) {
        if (origin >= 0)
            stays[std::size_t(origin - from)] = true;
    }
    for (qsizetype end = oldEnd; end > from;) {
        qsizetype first = end;
        while (first > from && !stays[std::size_t(first - 1 - from)])
            --first;
        if (first == end) {
            --end;
            continue;
        }
        beginRemoveRows({}, int(first), int(end - 1));
        m_content.rows.remove(first, end - first);
        endRemoveRows();
        end = first;
    }
}

/// Gives the rows that are left their new values. Returns which new rows those of the middle are now, in their old order.
QList<qsizetype> TodoRows::adopt(const Content &content, qsizetype from, const Origins &origins)
{
    QList<std::pair<qsizetype, qsizetype>> left;
    for (qsizetype i = 0; i < origins.size(); ++i) {
        if (origins[i] >= 0)
            left.append({origins[i], i});
    }
    std::ranges::sort(left);
    QList<qsizetype> current;
    for (const auto &[old, now] : left)
        current.append(now);

    QList<Row> rows = content.rows.first(from);
    for (const qsizetype now : current)
        rows.append(content.rows[from + now]);
    rows += content.rows.sliced(from + origins.size());
    m_content = {content.todos, content.projects, rows};
    return current;
}

void TodoRows::reorder(QList<qsizetype> current, qsizetype from)
{
    const std::vector<bool> stays = longestIncreasing(current);
    QList<qsizetype> moving;
    for (qsizetype i = 0; i < current.size(); ++i) {
        if (!stays[std::size_t(i)])
            moving.append(current[i]);
    }
    QList<qsizetype> target = current;
    std::ranges::sort(target);
    std::ranges::sort(moving);
    for (const qsizetype row : moving) {
        // Everything before it in the target stands in order already, so right behind its predecessor is its place.
        const auto place = std::ranges::lower_bound(target, row);
        const qsizetype to = place == target.begin() ? 0 : current.indexOf(*std::prev(place)) + 1;
        const qsizetype at = current.indexOf(row);
        if (!beginMoveRows({}, int(from + at), int(from + at), {}, int(from + to)))
            continue; // it stands there already
        const qsizetype landing = to > at ? to - 1 : to;
        m_content.rows.move(from + at, from + landing);
        current.move(at, landing);
        endMoveRows();
    }
}

void TodoRows::insertNew(const Content &content, qsizetype from, const Origins &origins)
{
    for (qsizetype i = 0; i < origins.size();) {
        qsizetype end = i;
        while (end < origins.size() && origins[end] < 0)
            ++end;
        if (end > i) {
            beginInsertRows({}, int(from + i), int(from + end - 1));
            m_content.rows.insert(from + i, end - i, {});
            std::copy(content.rows.begin() + from + i, content.rows.begin() + from + end, m_content.rows.begin() + from + i);
            endInsertRows();
        }
        i = end + 1;
    }
}

void TodoRows::announce(const std::vector<bool> &changed)
{
    for (std::size_t i = 0; i < changed.size();) {
        std::size_t end = i;
        while (end < changed.size() && changed[end])
            ++end;
        if (end > i)
            Q_EMIT dataChanged(index(int(i)), index(int(end - 1)));
        i = end + 1;
    }
}

} // namespace velto
