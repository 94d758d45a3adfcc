#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <optional>

namespace velto {

Q_NAMESPACE

/// The tabs of the open panel, in their order.
enum class Tab : int { Home, Todos, Agents, Quillbox, Connect }; // QML of Qt 6.4 reads an enum as an int
Q_ENUM_NS(Tab)

inline constexpr Tab kAllTabs[] = {Tab::Home, Tab::Todos, Tab::Agents, Tab::Quillbox, Tab::Connect};

/// The text under which a tab is known outside the program: "home", "todos", "agents", "quillbox", "connect".
QString rawValue(Tab tab);
std::optional<Tab> tabFromRawValue(const QString &raw);

} // namespace velto
