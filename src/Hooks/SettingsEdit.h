#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>
#include <variant>
#include <vector>

namespace velto {

/// A hook in Claude Code's settings: what it runs at which event, and how long that may take.
struct SettingsHook {
    QByteArray event;
    QByteArray command;
    std::optional<int> timeoutSeconds;
};

/// The new bytes of the settings, or one sentence about what is wrong with the old ones.
using SettingsText = std::variant<QByteArray, QString>;

/// Edits of Claude Code's settings.json, bytes in and bytes out (its shape: https://code.claude.com/docs/en/hooks).
/// Pure and total: any input gives one of the two. The result is laid out as Claude Code lays it out; keys keep their order, even
/// repeated ones, and numbers their spelling. A group of hooks is ours if one of its commands holds `marker`.

/// Takes our groups out of each hook's event, and appends one for the hook.
SettingsText withHooks(QByteArrayView settings, const std::vector<SettingsHook> &hooks, QByteArrayView marker);
/// Takes our groups out of each hook's event, and whatever is empty as a result.
SettingsText withoutHooks(QByteArrayView settings, const std::vector<SettingsHook> &hooks, QByteArrayView marker);

} // namespace velto
