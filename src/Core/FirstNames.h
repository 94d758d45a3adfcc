#pragma once

#include <QStringList>

namespace velto {

/// The first few names, as one list in words.
template <typename List, typename Name> QString firstOf(const List &list, int count, Name name)
{
    QStringList names;
    for (const auto &each : list) {
        if (names.size() == count)
            break;
        names.append(name(each));
    }
    return names.join(QStringLiteral(", "));
}

} // namespace velto
