#pragma once

#include "Feeds/Calendar/GoogleMeeting.h"

#include <QList>
#include <QObject>

namespace velto {

/// Where meetings come from: what EverydaySource needs to know of a calendar service. UI thread only.
class MeetingFeed : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The coming meetings as they were read last, the first to start first.
    virtual const QList<GoogleMeeting> &meetings() const = 0;
    /// Whether the user has connected the service.
    virtual bool linked() const = 0;
    /// Reads again, if it is connected. Returns at once.
    virtual void refresh() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace velto
