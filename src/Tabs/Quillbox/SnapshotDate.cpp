#include "Tabs/Quillbox/SnapshotDate.h"

#include <QRegularExpression>
#include <QTimeZone>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

/// Seconds east of UTC; "Z" and a missing zone mean UTC.
int secondsEast(QStringView zone)
{
    if (zone.size() != 6)
        return 0;
    const int seconds = (zone.mid(1, 2).toInt() * 60 + zone.mid(4, 2).toInt()) * 60;
    return zone.front() == u'-' ? -seconds : seconds;
}

} // namespace

std::optional<QDateTime> snapshotDate(const QString &text)
{
    // "yyyy-MM-dd HH:mm:ss", or the same with a T; optionally a fraction of a second and a zone.
    static const QRegularExpression kForm(
        u"\\A([0-9]{4}-[0-9]{2}-[0-9]{2})(?: ([0-9:]{8})|T([0-9:]{8})(\\.[0-9]{1,9})?(Z|[+-][01][0-9]:[0-5][0-9]))\\z"_s);
    const QRegularExpressionMatch match = kForm.match(text);
    const QDate date = QDate::fromString(match.captured(1), u"yyyy-MM-dd"_s);
    const QTime time = QTime::fromString(match.captured(2) + match.captured(3), u"HH:mm:ss"_s);
    if (!match.hasMatch() || !date.isValid() || !time.isValid())
        return {};
    const int milliseconds = int(('0'_L1 + match.captured(4)).toDouble() * 1000);
    return QDateTime(date, time.addMSecs(milliseconds), Qt::UTC).addSecs(-secondsEast(match.captured(5)));
}

} // namespace velto
