#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>
#include <QVariant>

namespace velto {

/// A list for views whose rows keep their identity: it takes a whole new list, works out what was added, removed, moved and
/// changed by id, and announces no more than that. So an open menu, a hover or the focus survives a refresh. UI thread only.
class RowModel final : public QAbstractListModel {
    Q_OBJECT
public:
    /// The values of one row in the order of the roles; the first one is the id, as text. Where two rows of one list have
    /// the same id, the first goes on as the first, the second as the second.
    using Row = QVariantList;

    explicit RowModel(const QList<QByteArray> &roles, QObject *parent = nullptr);

    /// Not to be called from a slot on this model's own signals.
    void setRows(const QList<Row> &rows);
    const QList<Row> &rows() const { return m_rows; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    /// The id with the number of rows of the same id before it.
    using Key = std::pair<QString, int>;
    static QList<Key> keysOf(const QList<Row> &rows);

    void remove(const QList<Key> &wanted);
    void reorder(const QList<Key> &wanted);
    void insert(const QList<Row> &rows, const QList<Key> &wanted);
    void update(const QList<Row> &rows);
    void moveRow(qsizetype from, qsizetype to);

    QHash<int, QByteArray> m_roles;
    QList<Row> m_rows;
    QList<Key> m_keys;
};

} // namespace velto
