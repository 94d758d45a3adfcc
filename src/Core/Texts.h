#pragma once

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QStringList>

namespace velto {

class Clock;

/// The user's date.
QDate today(const Clock &clock);
/// The locale for dates and numbers in our English texts: English as the desktop's country writes it; international English if
/// that isn't known, since a date in the American order might be misread.
QLocale english(const QLocale &desktop);
/// How long ago, in one short word: "now", "12 min", "3 h", "2 d". The future is "now".
QString ago(const QDateTime &date, const QDateTime &now);
/// The same within a sentence: "just now", "12 min ago".
QString timeAgo(const QDateTime &date, const QDateTime &now);
/// A moment's local time in the user's short form, without a date: "14:30", "2:30 PM".
QString shortTime(const QDateTime &moment);
/// A count in a few characters: "999", "2k", "2.5M".
QString compact(qint64 count);
/// The last line that isn't blank, trimmed and cut to a length that a banner can show; empty if there is none.
QString lastLine(const QString &text);
/// A path with the home folder written as "~".
QString withTilde(const QString &path, const QString &home);
/// The last name of a path: "/home/me/proj/" gives "proj". The root is its own last name.
QString lastPathComponent(const QString &path);
/// Whether `text` is a session id of Claude Code's, a UUID, which needs no quoting in a command line.
bool isSessionId(const QString &text);

} // namespace velto
