#include "Core/Peek.h"

#include <QCoreApplication>

namespace velto {

QString Peek::actionLabel() const
{
    if (resume)
        return QCoreApplication::translate("Peek", "Resume");
    if (url)
        return QCoreApplication::translate("Peek", "Join");
    return {};
}

} // namespace velto
