#pragma once

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <array>
#include <optional>

namespace velto {

/// What somebody wrote about a todo, and when, as text for reading.
struct Comment {
    QString at;
    QString text;
    QByteArray unknown = {}; ///< what else the file says of it: members of a JSON object, as they stand there

    bool operator==(const Comment &) const = default;
};

/// One thing to do, wherever it is kept. Nothing in it is validated. Dates are text, "yyyy-MM-dd", and compared as text.
struct Todo {
    qint64 id = 0; ///< the store's number; 0 is a draft that no store has seen
    QString title; ///< one line
    QString details; ///< may be several lines; never holds the comments
    QString due; ///< empty for no date
    QString who = QStringLiteral("me"); ///< the person it waits on
    QString project; ///< empty for none
    QString scope = QStringLiteral("office"); ///< the area of life that the list is cut by
    qint64 prio = 2; ///< 1 is the highest
    QList<Comment> comments; ///< oldest first
    QByteArray unknown = {}; ///< likewise, which another program may need

    bool operator==(const Todo &) const = default;

    bool overdue(const QString &today) const;
    /// Due by today, which includes overdue.
    bool dueNow(const QString &today) const;
};

/// `standing` with what was changed from `base` to `edited`.
Todo merged(const Todo &standing, const Todo &base, const Todo &edited);

/// Which dates the list shows.
enum class Filter : quint8 { Today, Overdue, Upcoming, All };
inline constexpr std::array kAllFilters{Filter::Today, Filter::Overdue, Filter::Upcoming, Filter::All};

/// "Today", "Overdue", "Upcoming", "All".
QString rawValue(Filter filter);
/// The same, as the user reads it.
QString label(Filter filter);
std::optional<Filter> filterFromRawValue(const QString &raw);
/// Whether a todo passes this filter. One without a date is upcoming.
bool passes(Filter filter, const Todo &todo, const QString &today);

/// By code points, which is how dates and everything else in a list of todos are compared.
bool sortsBefore(const QString &a, const QString &b);

/// A "yyyy-MM-dd" as a day; an invalid date if it isn't one.
QDate dayOf(const QString &text);
QString textOf(QDate day);

/// Splits the body that a store keeps into details and comments.
void readBody(const QString &body, Todo &todo);

} // namespace velto
