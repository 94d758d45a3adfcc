// Any answer of the calendar service: the meetings are read or the reply is refused, and each meeting that is read can be
// shown. The same bytes are also sent as a browser's request to the sign-in's port.

#include "Core/WorkError.h"
#include "Feeds/Calendar/GoogleMeeting.h"
#include "Feeds/Calendar/SignInListener.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        for (const velto::GoogleMeeting &meeting : velto::parseMeetings(bytes, QStringLiteral("mine"))) {
            const bool usable = meeting.start.isValid() && meeting.end.isValid() && meeting.start.timeSpec() == Qt::UTC;
            if (!usable || meeting.calendarID != QStringLiteral("mine") || (meeting.joinURL && !meeting.joinURL->isValid()))
                std::abort();
        }
        for (const velto::GoogleCalendarInfo &calendar : velto::parseCalendars(bytes)) {
            if (calendar.id.isNull() || calendar.summary.isNull())
                std::abort();
        }
    } catch (const velto::WorkError &error) {
        if (error.errorDescription.isEmpty())
            std::abort();
    }
    const velto::SignInAnswer answer = velto::answerIn(bytes, QStringLiteral("STATE"));
    if (answer.code && (answer.code->isEmpty() || answer.error || !bytes.contains("code=")))
        std::abort();
    return 0;
}
