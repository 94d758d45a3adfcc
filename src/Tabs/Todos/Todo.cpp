#include "Tabs/Todos/Todo.h"

#include <QCoreApplication>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr auto kCommentSeparator = "\n\n## Comments\n"_L1;

Comment commentOf(QStringView line)
{
    constexpr auto kDot = u" · ";
    if (line.startsWith("- "_L1))
        line = line.sliced(2);
    const qsizetype dot = line.indexOf(kDot);
    if (dot < 0)
        return {};
    return {line.first(dot).toString(), line.sliced(dot + 3).toString()};
}

} // namespace

bool Todo::overdue(const QString &today) const
{
    return !due.isEmpty() && sortsBefore(due, today);
}

bool Todo::dueNow(const QString &today) const
{
    return !due.isEmpty() && !sortsBefore(today, due);
}

Todo merged(const Todo &standing, const Todo &base, const Todo &edited)
{
    Todo todo = standing;
    const auto take = [&](auto Todo::*field) {
        if (edited.*field != base.*field)
            todo.*field = edited.*field;
    };
    take(&Todo::title);
    take(&Todo::details);
    take(&Todo::due);
    take(&Todo::who);
    take(&Todo::project);
    take(&Todo::scope);
    take(&Todo::prio);
    take(&Todo::comments);
    return todo;
}

QString rawValue(Filter filter)
{
    switch (filter) {
    case Filter::Today:
        return u"Today"_s;
    case Filter::Overdue:
        return u"Overdue"_s;
    case Filter::Upcoming:
        return u"Upcoming"_s;
    case Filter::All:
        break;
    }
    return u"All"_s;
}

QString label(Filter filter)
{
    switch (filter) {
    case Filter::Today:
        return QCoreApplication::translate("Filter", "Today");
    case Filter::Overdue:
        return QCoreApplication::translate("Filter", "Overdue");
    case Filter::Upcoming:
        return QCoreApplication::translate("Filter", "Upcoming");
    case Filter::All:
        break;
    }
    return QCoreApplication::translate("Filter", "All");
}

std::optional<Filter> filterFromRawValue(const QString &raw)
{
    const auto found = std::ranges::find(kAllFilters, raw, rawValue);
    return found == kAllFilters.end() ? std::nullopt : std::optional(*found);
}

bool passes(Filter filter, const Todo &todo, const QString &today)
{
    switch (filter) {
    case Filter::Today:
        return todo.dueNow(today);
    case Filter::Overdue:
        return todo.overdue(today);
    case Filter::Upcoming:
        return !todo.dueNow(today);
    case Filter::All:
        break;
    }
    return true;
}

bool sortsBefore(const QString &a, const QString &b)
{
    // UTF-16 sorts like code points, except for code points above the surrogates.
    const auto [left, right] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (left == a.end() || right == b.end())
        return right != b.end();
    if (left->isSurrogate() != right->isSurrogate())
        return right->isSurrogate();
    return *left < *right;
}

QDate dayOf(const QString &text)
{
    constexpr qsizetype kLength = 10;
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    const auto number = [&text](qsizetype at, qsizetype length) { return QStringView(text).sliced(at, length).toInt(); };
    if (text.size() != kLength || text[4] != u'-' || text[7] != u'-' || std::ranges::count_if(text, isDigit) != kLength - 2)
        return {};
    return QDate(number(0, 4), number(5, 2), number(8, 2));
}

QString textOf(QDate day)
{
    return day.toString(u"yyyy-MM-dd");
}

void readBody(const QString &body, Todo &todo)
{
    const qsizetype cut = body.indexOf(kCommentSeparator);
    todo.details = body.left(cut);
    todo.comments.clear();
    if (cut < 0)
        return;
    QStringView rest = QStringView(body).sliced(cut + kCommentSeparator.size());
    if (const qsizetype next = rest.indexOf(kCommentSeparator); next >= 0)
        rest = rest.first(next);
    for (const QStringView line : rest.split(u'\n', Qt::SkipEmptyParts)) {
        if (Comment comment = commentOf(line); !comment.at.isNull())
            todo.comments.append(std::move(comment));
    }
}

} // namespace velto
