#include "StoreDesk.h"

namespace velto {

StoreDesk::StoreDesk(const QDateTime &now)
    : clock(now)
{
}

StoreDesk::~StoreDesk() = default;

QStringList StoreDesk::texts() const
{
    QStringList result;
    for (const Peek &peek : peeks)
        result.append(peek.text);
    return result;
}

} // namespace velto
