#pragma once

#include <QJsonValue>
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

/// The address that a service sent with an item; nothing if it sent none, or a text that isn't an address.
std::optional<QUrl> addressIn(const QJsonValue &value);
/// The beginning of a text, as many characters as a person would count.
QString firstCharacters(const QString &text, int count);

} // namespace velto
