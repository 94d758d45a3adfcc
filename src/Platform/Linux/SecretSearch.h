#pragma once

#include <QString>
#include <chrono>

namespace velto {

/// Whether the desktop's keyring has an item with this schema and this name as its attribute "service", locked or not. Asked over
/// the session bus, which is there anyway: so a user without secrets never loads libsecret and GIO (2.5 MB, two threads). False
/// where there is no keyring, or none that answers within `limit`. Any thread; blocks.
/// https://specifications.freedesktop.org/secret-service-spec/latest/
bool keyringHolds(const QString &schema, const QString &name, std::chrono::milliseconds limit);

} // namespace velto
