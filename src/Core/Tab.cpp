#include "Core/Tab.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace velto {

namespace {
constexpr std::array<std::pair<Tab, QLatin1StringView>, 5> kRawValues{{
    {Tab::Home, "home"_L1},
    {Tab::Todos, "todos"_L1},
    {Tab::Agents, "agents"_L1},
    {Tab::Quillbox, "quillbox"_L1},
    {Tab::Connect, "connect"_L1},
}};
}

QString rawValue(Tab tab)
{
    return kRawValues[std::size_t(tab)].second;
}

std::optional<Tab> tabFromRawValue(const QString &raw)
{
    for (const auto &[tab, text] : kRawValues) {
        if (raw == text)
            return tab;
    }
    return std::nullopt;
}

} // namespace velto
