#include "Core/RowModel.h"

#include "Core/LongestRun.h"

#include <QSet>

// A new list is reached in four steps, each of which leaves the model consistent: remove, move, insert, update. A longest
// increasing run of the remaining rows stays in place, so that as few rows as possible move: a session that starts to work and
// jumps to the top is one move, not one for each row above it.

namespace velto {

RowModel::RowModel(const QList<QByteArray> &roles, QObject *parent)
    : QAbstractListModel(parent)
{
    for (int i = 0; i < roles.size(); ++i)
        m_roles.insert(Qt::UserRole + i, roles[i]);
}

QList<RowModel::Key> RowModel::keysOf(const QList<Row> &rows)
{
    QHash<QString, int> seen;
    QList<Key> keys;
    keys.reserve(rows.size());
    for (const Row &row : rows) {
        const QString id = row.value(0).toString();
        keys.append({id, seen[id]++});
    }
    return keys;
}

void RowModel::setRows(const QList<Row> &rows)
{
    if (rows == m_rows)
        return;
    const QList<Key> wanted = keysOf(rows);
    remove(wanted);
    reorder(wanted);
    insert(rows, wanted);
    update(rows);
    if (m_rows.size() < m_rows.capacity() / 2) {
        m_rows.squeeze();
        m_keys.squeeze();
    }
}

void RowModel::remove(const QList<Key> &wanted)
{
    const QSet<Key> staying(wanted.begin(), wanted.end());
    for (qsizetype end = m_rows.size(); end > 0;) {
        qsizetype first = end;
        while (first > 0 && !staying.contains(m_keys[first - 1]))
            --first;
        if (first == end) {
            --end;
            continue;
        }
        beginRemoveRows({}, int(first), int(end - 1));
        m_rows.remove(first, end - first);
        m_keys.remove(first, end - first);
        endRemoveRows();
        end = first;
    }
}

void RowModel::reorder(const QList<Key> &wanted)
{
    QHash<Key, qsizetype> places;
    for (qsizetype i = 0; i < m_keys.size(); ++i)
        places.insert(m_keys[i], i);
    QList<Key> target;
    QList<qsizetype> order;
    for (const Key &key : wanted) {
        if (const auto place = places.constFind(key); place != places.cend()) {
            target.append(key);
            order.append(*place);
        }
    }
    const std::vector<bool> stays = longestIncreasing(order);
    for (qsizetype i = 0; i < target.size(); ++i) {
        if (stays[std::size_t(i)])
            continue;
        // All that precedes it in the target is in order already, so its place is right behind its predecessor.
        const qsizetype to = i == 0 ? 0 : m_keys.indexOf(target[i - 1]) + 1;
        moveRow(m_keys.indexOf(target[i]), to);
    }
}

void RowModel::moveRow(qsizetype from, qsizetype to)
{
    if (!beginMoveRows({}, int(from), int(from), {}, int(to)))
        return; // already in place
    const qsizetype landing = to > from ? to - 1 : to;
    m_rows.move(from, landing);
    m_keys.move(from, landing);
    endMoveRows();
}

void RowModel::insert(const QList<Row> &rows, const QList<Key> &wanted)
{
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        const auto isThere = [&](qsizetype at) { return i < m_keys.size() && m_keys[i] == wanted[at]; };
        qsizetype end = i;
        while (end < wanted.size() && !isThere(end))
            ++end;
        if (end == i)
            continue;
        beginInsertRows({}, int(i), int(end - 1));
        m_rows = m_rows.first(i) + rows.sliced(i, end - i) + m_rows.sliced(i);
        m_keys = m_keys.first(i) + wanted.sliced(i, end - i) + m_keys.sliced(i);
        endInsertRows();
        i = end - 1;
    }
}

void RowModel::update(const QList<Row> &rows)
{
    for (qsizetype i = 0; i < rows.size();) {
        QList<int> roles;
        qsizetype end = i;
        for (; end < rows.size() && rows[end] != m_rows[end]; ++end) {
            for (qsizetype role = 0; role < rows[end].size(); ++role) {
                if (rows[end].value(role) != m_rows[end].value(role) && !roles.contains(int(Qt::UserRole + role)))
                    roles.append(int(Qt::UserRole + role));
            }
            m_rows[end] = rows[end];
        }
        if (end > i)
            Q_EMIT dataChanged(index(int(i)), index(int(end - 1)), roles);
        i = end + 1;
    }
}

int RowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant RowModel::data(const QModelIndex &index, int role) const
{
    return checkIndex(index, CheckIndexOption::IndexIsValid) ? m_rows[index.row()].value(role - Qt::UserRole) : QVariant();
}

QHash<int, QByteArray> RowModel::roleNames() const
{
    return m_roles;
}

} // namespace velto
