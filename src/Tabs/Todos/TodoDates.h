#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace velto {

/// A "yyyy-MM-dd" for the user, in the order of the language: "Sat, Nov 21". Anything else is returned as it is.
QString shortDate(const QString &text, const QLocale &locale = QLocale());
/// Short date and time, for reading only: "Nov 21, 2026, 9:00 AM".
QString shortDateTime(const QDateTime &time, const QLocale &locale = QLocale());

} // namespace velto
