#pragma once

#include <QAbstractItemModel>
#include <QTest>

namespace velto {

/// What a view knows that follows every signal of a model and reads a row only when told to.
class Follower : public QObject {
public:
    Follower(const QAbstractItemModel &model, const QList<int> &roles)
        : rows(read(model, roles))
    {
        using Model = QAbstractItemModel;
        connect(&model, &Model::rowsInserted, this, [this, &model, roles](const QModelIndex &, int first, int last) {
            for (int i = first; i <= last; ++i)
                rows.insert(i, readRow(model, roles, i));
            ++steps;
        });
        connect(&model, &Model::rowsRemoved, this, [this](const QModelIndex &, int first, int last) {
            rows.remove(first, last - first + 1);
            ++steps;
        });
        connect(&model, &Model::rowsMoved, this, [this](const QModelIndex &, int from, int, const QModelIndex &, int to) {
            rows.move(from, to > from ? to - 1 : to);
            ++steps;
            ++moves;
        });
        connect(&model, &Model::dataChanged, this, [this, &model, roles](const QModelIndex &first, const QModelIndex &last) {
            for (int i = first.row(); i <= last.row(); ++i)
                rows[i] = readRow(model, roles, i);
            ++steps;
        });
        connect(&model, &Model::modelReset, this, [] { QFAIL("the rows lost their identity"); });
    }
    static QList<QVariantList> read(const QAbstractItemModel &model, const QList<int> &roles)
    {
        QList<QVariantList> rows;
        for (int i = 0; i < model.rowCount(); ++i)
            rows.append(readRow(model, roles, i));
        return rows;
    }

    QList<QVariantList> rows;
    int steps = 0;
    int moves = 0; ///< so many of them

private:
    static QVariantList readRow(const QAbstractItemModel &model, const QList<int> &roles, int row)
    {
        QVariantList values;
        for (const int role : roles)
            values.append(model.index(row, 0).data(role));
        return values;
    }
};

} // namespace velto
