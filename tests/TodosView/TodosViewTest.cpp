#include "TodosView/TodosViewTest.h"

#include <QAccessible>
#include <QQuickItem>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace velto {

void TodosViewTest::anEmptyListSaysWhy()
{
    show();
    QVERIFY(m_view->grabWindow().width() > 0);
}

void TodosViewTest::aRowSaysWhatTheTodoIs() { }
void TodosViewTest::aPressOpensARow() { }
void TodosViewTest::aDoneTodoCanBeHadBack() { }
void TodosViewTest::anErrorStandsAboveTheListUntilItIsDismissed() { }
void TodosViewTest::theListsAreChosenWhereThereAreSeveral() { }
void TodosViewTest::aSnapshotOfTheHubLeavesTheRowsAlone() { }
void TodosViewTest::whatIsTypedSurvivesChanges()
{
    show(some());
    source().chooseFilter(u"All"_s);
    source().press(u"2"_s);
    QTest::qWait(700);
    m_view->grabWindow().save(u"/tmp/t1.png"_s);
    source().newDraft();
    source().form()->toggleMore();
    QTest::qWait(700);
    m_view->grabWindow().save(u"/tmp/t2.png"_s);
}
void TodosViewTest::theFormFitsWhateverStandsAboveIt() { }
void TodosViewTest::tenThousandTodosShowOnlyThoseInSight() { }

} // namespace velto
