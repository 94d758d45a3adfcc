#include "Tabs/Todos/TodoTexts.h"

#include "Tabs/Todos/TodoDates.h"

#include <QCoreApplication>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("TodoRow", text);
}

QString spokenPriority(qint64 prio)
{
    switch (prio) {
    case 1:
        return tr(QT_TRANSLATE_NOOP("TodoRow", "High priority"));
    case 2:
        return {};
    case 3:
        return tr(QT_TRANSLATE_NOOP("TodoRow", "Low priority"));
    default:
        return tr(QT_TRANSLATE_NOOP("TodoRow", "Normal priority"));
    }
}

} // namespace

QString dueText(const Todo &todo, const Days &days)
{
    if (todo.due.isEmpty())
        return {};
    if (todo.due == days.today)
        return tr(QT_TRANSLATE_NOOP("TodoRow", "Today"));
    if (todo.due == days.tomorrow)
        return tr(QT_TRANSLATE_NOOP("TodoRow", "Tomorrow"));
    if (todo.overdue(days.today))
        return tr(QT_TRANSLATE_NOOP("TodoRow", "Overdue · %1")).arg(shortDate(todo.due));
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
        pieces += tr(QT_TRANSLATE_NOOP("TodoRow", "due %1")).arg(due);
    if (const QString person = personText(todo); !person.isEmpty())
        pieces += tr(QT_TRANSLATE_NOOP("TodoRow", "with %1")).arg(person);
    if (!todo.comments.isEmpty())
        pieces += tr(QT_TRANSLATE_NOOP("TodoRow", "%1 comments")).arg(todo.comments.size());
    pieces.removeAll(QString());
    return pieces.join(", "_L1);
}

} // namespace velto
