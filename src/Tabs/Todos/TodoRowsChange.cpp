#include "Tabs/Todos/TodoRowsChange.h"

#include "Core/LongestRun.h"

#include <QHash>
#include <algorithm>

namespace velto {

namespace {

/// More steps than this cost a view more than new rows would.
constexpr qsizetype kMostSteps = 100;

bool sameId(const TodoContent &a, qsizetype i, const TodoContent &b, qsizetype j)
{
    const TodoContent::Row &left = a.rows[i];
    const TodoContent::Row &right = b.rows[j];
    if (left.isHeading() || right.isHeading())
        return left.isHeading() && right.isHeading() && a.projects[left.project] == b.projects[right.project];
    return a.todos[left.todo].id == b.todos[right.todo].id;
}

/// A row's id, with the number of rows before it that have the same id.
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

template <typename Take> void forEachKey(const TodoContent &content, qsizetype from, qsizetype end, Take take)
{
    QHash<Key, int> seen;
    for (qsizetype i = from; i < end; ++i) {
        const TodoContent::Row &row = content.rows[i];
        Key key;
        if (row.isHeading())
            key.project = content.projects[row.project];
        else
            key.todo = content.todos[row.todo].id;
        key.number = seen[key]++;
        take(key, i);
    }
}

/// The number of contiguous runs in a list of row numbers.
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

QList<qsizetype> originsOf(const TodoContent &old, const TodoContent &now, qsizetype from, qsizetype oldEnd, qsizetype newEnd)
{
    QHash<Key, qsizetype> places;
    forEachKey(old, from, oldEnd, [&](const Key &key, qsizetype place) { places.insert(key, place); });
    QList<qsizetype> origins;
    origins.reserve(newEnd - from);
    forEachKey(now, from, newEnd, [&](const Key &key, qsizetype) { origins.append(places.value(key, -1)); });
    return origins;
}

std::vector<bool> changesTo(const TodoContent &old, const TodoContent &now, bool sameDay, qsizetype from,
                            const QList<qsizetype> &origins)
{
    const bool sameTodos = now.todos.isSharedWith(old.todos);
    const qsizetype shift = old.rows.size() - now.rows.size();
    std::vector<bool> changed(std::size_t(now.rows.size()), false);
    for (qsizetype i = 0; i < now.rows.size(); ++i) {
        const bool inMiddle = i >= from && i < from + origins.size();
        const qsizetype origin = i < from ? i : inMiddle ? origins[i - from] : i + shift;
        if (origin < 0 || now.rows[i].isHeading())
            continue;
        const qsizetype before = old.rows[origin].todo;
        const qsizetype after = now.rows[i].todo;
        const bool same = (sameTodos && before == after) || old.todos[before] == now.todos[after];
        changed[std::size_t(i)] = !same || !sameDay;
    }
    return changed;
}

} // namespace

int TodoContent::placeOf(std::optional<qint64> id) const
{
    const auto found =
        std::ranges::find_if(rows, [&](const Row &row) { return id && !row.isHeading() && todos[row.todo].id == *id; });
    return found == rows.end() ? -1 : int(found - rows.begin());
}

TodoRowsChange changeBetween(const TodoContent &old, const TodoContent &now, bool sameDay, std::optional<qint64> open,
                             std::optional<qint64> selected)
{
    const qsizetype shorter = std::min(old.rows.size(), now.rows.size());
    qsizetype from = 0;
    while (from < shorter && sameId(old, from, now, from))
        ++from;
    qsizetype oldEnd = old.rows.size();
    qsizetype newEnd = now.rows.size();
    while (oldEnd > from && newEnd > from && sameId(old, oldEnd - 1, now, newEnd - 1)) {
        --oldEnd;
        --newEnd;
    }
    QList<qsizetype> origins = originsOf(old, now, from, oldEnd, newEnd);
    if (stepsTo(origins, from, oldEnd) > kMostSteps) {
        const int opened = old.placeOf(open);
        const int kept = opened >= 0 && origins.contains(opened) ? opened : old.placeOf(selected);
        for (qsizetype &origin : origins)
            origin = origin == kept ? origin : -1;
    }
    std::vector<bool> changed = changesTo(old, now, sameDay, from, origins);
    return {from, oldEnd, std::move(origins), std::move(changed)};
}

} // namespace velto
