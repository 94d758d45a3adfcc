#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

struct GoogleMeeting;

/// The calendar event to show.
struct NextEvent {
    QString id; ///< "manual-" or "google-" and what follows
    QString title;
    QDateTime start;
    QDateTime end;
    std::optional<QString> location;
    std::optional<QUrl> joinURL;

    /// The meeting that the user typed in, an hour long. Nothing if it has no title or is over. A link that a browser wouldn't
    /// open is left out; one without a scheme ("meet.example.com/abc") is taken for https.
    static std::optional<NextEvent> typedIn(const QString &title, const QDateTime &start, const QString &link,
                                            const QDateTime &now);
    static NextEvent from(const GoogleMeeting &meeting);

    /// When it is, in words: "in 15 min", "at 14:30", "now · until 15:30".
    QString relative(const QDateTime &now) const;
    /// When relative() next changes; nothing if it won't.
    std::optional<QDateTime> nextTurn(const QDateTime &now) const;
    /// Where it is; may be empty.
    QString detail() const;

    bool operator==(const NextEvent &) const = default;
};

} // namespace velto
