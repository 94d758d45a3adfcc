#pragma once

#include "Feeds/Usage/UsageLine.h"

#include <QByteArray>
#include <random>

namespace velto {

/// What `line` contains, read the plain way: the whole document is built, and examined afterwards.
std::optional<UsageLine> plainUsageLine(const QByteArray &line);

/// Whether the plain way may reject the line although it is JSON, because of its numbers or its depth.
bool isBeyondPlain(const QByteArray &line);

/// Realistic lines, possible ones, and damaged ones.
class UsageFuzz {
public:
    explicit UsageFuzz(unsigned seed)
        : m_random(seed)
    {
    }

    QByteArray line();
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }

private:
    QByteArray text();
    QByteArray value(int depth);
    QByteArray count();
    QByteArray timestamp();
    QByteArray usage();
    void damage(QByteArray &line);

    std::mt19937 m_random;
};

} // namespace velto
