#include "Core/LongestRun.h"

#include <algorithm>

namespace velto {

std::vector<bool> longestIncreasing(const QList<qsizetype> &order)
{
    QList<qsizetype> tails; // tails[n]: the index at which the best run of n + 1 values ends
    QList<qsizetype> before(order.size(), -1);
    for (qsizetype i = 0; i < order.size(); ++i) {
        const auto place = std::ranges::lower_bound(tails, order[i], {}, [&order](qsizetype at) { return order[at]; });
        const qsizetype length = place - tails.begin();
        before[i] = length > 0 ? tails[length - 1] : -1;
        if (place == tails.end())
            tails.append(i);
        else
            *place = i;
    }
    std::vector<bool> member(std::size_t(order.size()), false);
    for (qsizetype i = tails.isEmpty() ? -1 : tails.back(); i >= 0; i = before[i])
        member[std::size_t(i)] = true;
    return member;
}

} // namespace velto
