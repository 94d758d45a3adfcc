#include "Core/Texts.h"

#include "Platform/Clock.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qint64 kMinute = 60;
constexpr qint64 kHour = 60 * kMinute;
constexpr qint64 kDay = 24 * kHour;

/// As printf writes it, whatever the user's decimal separator.
QString fixed(double value, int decimals)
{
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
    return QString::fromLatin1(text.data(), end.ptr - text.data());
}

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

} // namespace

QDate today(const Clock &clock)
{
    return clock.wallTime().toLocalTime().date();
}

QString ago(const QDateTime &date, const QDateTime &now)
{
    const qint64 seconds = date.msecsTo(now) / 1000;
    if (seconds < kMinute)
        return QCoreApplication::translate("ago", "now");
    if (seconds < kHour)
        return QCoreApplication::translate("ago", "%1 min").arg(seconds / kMinute);
    if (seconds < kDay)
        return QCoreApplication::translate("ago", "%1 h").arg(seconds / kHour);
    return QCoreApplication::translate("ago", "%1 d").arg(seconds / kDay);
}

QString timeAgo(const QDateTime &date, const QDateTime &now)
{
    if (date.msecsTo(now) / 1000 < kMinute)
        return QCoreApplication::translate("ago", "just now");
    return QCoreApplication::translate("ago", "%1 ago").arg(ago(date, now));
}

QLocale english(const QLocale &desktop)
{
    const QLocale here(QLocale::English, desktop.territory());
    const bool known = desktop.language() == QLocale::C || here.territory() == desktop.territory();
    return known ? here : QLocale(QLocale::English, QLocale::World);
}

QString shortTime(const QDateTime &moment)
{
    // The form is the system's, since LC_TIME may name another country than the language of our texts; words and digits are
    // those of our texts.
    const QLocale locale = QLocale::system();
    const QTime time = moment.toLocalTime().time();
    // The C locale has no country, and so no short form.
    return locale.language() == QLocale::C ? time.toString(u"HH:mm"_s)
                                           : QLocale().toString(time, locale.timeFormat(QLocale::ShortFormat));
}

QString compact(qint64 count)
{
    if (count < 1000)
        return QString::number(count);
    if (count < 1'000'000)
        return fixed(double(count) / 1000, 0) + u'k';
    return fixed(double(count) / 1'000'000, 1) + u'M';
}

QString lastLine(const QString &text)
{
    constexpr qsizetype kLongest = 200;
    const QStringList lines = text.split(u'\n');
    const auto line = std::find_if(lines.rbegin(), lines.rend(), [](const QString &each) { return !each.trimmed().isEmpty(); });
    if (line == lines.rend())
        return {};
    const QString trimmed = line->trimmed();
    return trimmed.size() <= kLongest ? trimmed : trimmed.first(kLongest) + u'…';
}

QString withTilde(const QString &path, const QString &home)
{
    return path == home || path.startsWith(home + u'/') ? u'~' + path.mid(home.size()) : path;
}

QString lastPathComponent(const QString &path)
{
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    const QStringView trimmed = QStringView(path).first(end);
    return trimmed == u'/' ? trimmed.toString() : trimmed.sliced(trimmed.lastIndexOf(u'/') + 1).toString();
}

bool isSessionId(const QString &text)
{
    constexpr qsizetype kLength = 36;
    if (text.size() != kLength)
        return false;
    for (qsizetype i = 0; i < kLength; ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash ? text[i] != u'-' : !isHexDigit(text[i]))
            return false;
    }
    return true;
}

} // namespace velto
