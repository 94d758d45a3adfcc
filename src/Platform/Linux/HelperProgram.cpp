#include "Platform/Linux/HelperProgram.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

QString helperProgram(const QString &name)
{
    const QString here = QCoreApplication::applicationDirPath();
    for (const QString &folder : {here + u'/', here + "/../libexec/velto/"_L1})
        if (QFileInfo(folder + name).isExecutable())
            return folder + name;
    return {};
}

} // namespace velto
