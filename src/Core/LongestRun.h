#pragma once

#include <QList>
#include <vector>

namespace velto {

/// Places in `order` that form a longest increasing run of its values.
std::vector<bool> longestIncreasing(const QList<qsizetype> &order);

} // namespace velto
