#include "Core/RowModel.h"
#include "Follower.h"
#include "RunTests.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <algorithm>

using namespace Qt::StringLiterals;
using namespace velto;

namespace {

const QList<int> kRoles{Qt::UserRole, Qt::UserRole + 1};

QList<RowModel::Row> named(const QString &ids)
{
    QList<RowModel::Row> rows;
    for (const QChar id : ids)
        rows.append({QString(id), 0});
    return rows;
}

} // namespace

class RowModelTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void reachesAnyListFromAnyOther()
    {
        QRandomGenerator random(20261121);
        RowModel model({"rowId", "value"});
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const Follower copy(model, kRoles);
        for (int round = 0; round < 500; ++round) {
            // Few ids, so that some occur twice.
            QList<RowModel::Row> wanted;
            const int size = random.bounded(12);
            for (int i = 0; i < size; ++i)
                wanted.append({QString::number(random.bounded(15)), random.bounded(3)});
            const auto unique = [&wanted](const QString &id) {
                return std::ranges::count(wanted, id, [](const auto &row) { return row[0].toString(); }) == 1;
            };
            QList<std::pair<QString, QPersistentModelIndex>> held;
            for (int i = 0; i < model.rowCount(); ++i)
                held.append({model.rows()[i][0].toString(), model.index(i)});

            model.setRows(wanted);
            QCOMPARE(model.rows(), wanted);
            QCOMPARE(copy.rows, wanted);
            for (const auto &[id, index] : held) {
                if (index.isValid())
                    QCOMPARE(index.data(Qt::UserRole).toString(), id);
                else
                    QVERIFY(!unique(id) || std::ranges::count(held, id, [](const auto &h) { return h.first; }) > 1);
            }
        }
    }

    void movesNoMoreThanItMust()
    {
        const auto row = [](const QString &before, const QString &after, int moves) {
            RowModel model({"rowId", "value"});
            model.setRows(named(before));
            const Follower copy(model, kRoles);
            model.setRows(named(after));
            QCOMPARE(copy.rows, named(after));
            QCOMPARE(copy.moves, moves);
        };
        row(u"abcdefgh"_s, u"habcdefg"_s, 1); // to the top
        row(u"abcdefgh"_s, u"bcdefgha"_s, 1); // to the end
        row(u"abcdefgh"_s, u"abedcfgh"_s, 2); // two swapped pairs
        row(u"abcdefgh"_s, u"xaceygz"_s, 0); // insertions and removals only
        row(u"abcd"_s, u"dcba"_s, 3);
    }

    void touchesOnlyWhatChanged()
    {
        RowModel model({"rowId", "value"});
        QList<RowModel::Row> rows = named(u"abcdefgh"_s);
        model.setRows(rows);
        QSignalSpy changed(&model, &RowModel::dataChanged);
        QSignalSpy inserted(&model, &RowModel::rowsInserted);
        QSignalSpy removed(&model, &RowModel::rowsRemoved);
        model.setRows(rows);
        QCOMPARE(changed.size(), 0);
        rows[3][1] = 7;
        model.setRows(rows);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed[0][0].toModelIndex().row(), 3);
        QCOMPARE(changed[0][1].toModelIndex().row(), 3);
        QCOMPARE(changed[0][2].value<QList<int>>(), QList<int>{Qt::UserRole + 1});
        // Neighbours come and go in one step.
        model.setRows(named(u"aefxyzgh"_s));
        QCOMPARE(removed.size(), 1);
        QCOMPARE(inserted.size(), 1);
    }
};

static const Registered<RowModelTest> registered;
#include "RowModelTest.moc"
