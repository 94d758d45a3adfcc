#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <optional>

namespace velto {

/// Something that somebody wants of the user. The title is foreign text; the link is opened through Workspace only.
struct WorkItem {
    QString id; ///< unique within its list
    QString title;
    std::optional<QUrl> url;

    bool operator==(const WorkItem &) const = default;
};

} // namespace velto
