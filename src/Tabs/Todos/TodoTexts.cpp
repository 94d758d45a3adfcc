#include "Tabs/Todos/TodoTexts.h"

#include "Core/Words.h"
#include "Tabs/Todos/TodoDates.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString spokenPriority(qint64 prio)
{
    switch (prio) {
    case 1:
        return Words::tr("High priority");
    case 2:
        return {};
    case 3:
        return Words::tr("Low priority");
    default:
        return Words::tr("Normal priority");
    }
}

} // namespace

QString dueText(const Todo &todo, const Days &days)
{
    if (todo.due.isEmpty())
        return {};
    if (todo.due == days.today)
        return Words::tr("Today");
    if (todo.due == days.tomorrow)
        return Words::tr("Tomorrow");
    if (todo.overdue(days.today))
        return Words::tr("Overdue · %1").arg(shortDate(todo.due));
    return shortDate(todo.due);
}

QString personText(const Todo &todo)
{
    return todo.who == "me"_L1 ? QString() : todo.who;
}

QString accessibleSummary(const Todo &todo, const Days &days)
{
    QStringList pieces{todo.title, spokenPriority(todo.prio)};
    if (const QString due = dueText(todo, days); !due.isEmpty())
        pieces += Words::tr("due %1").arg(due);
    if (const QString person = personText(todo); !person.isEmpty())
        pieces += Words::tr("with %1").arg(person);
    if (!todo.comments.isEmpty())
        pieces += Words::tr("%1 comments").arg(todo.comments.size());
    pieces.removeAll(QString());
    return pieces.join(", "_L1);
}

} // namespace velto
