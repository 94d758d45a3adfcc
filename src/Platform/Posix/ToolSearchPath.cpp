#include "Platform/Posix/ToolSearchPath.h"

using namespace Qt::StringLiterals;

namespace velto {

QStringList toolSearchPath(const QString &home, const QString &path)
{
    QStringList folders{
        home + "/.local/bin"_L1,
        u"/opt/homebrew/bin"_s,
        u"/usr/local/bin"_s,
        home + "/.npm-global/bin"_L1,
        home + "/.bun/bin"_L1,
        home + "/.cargo/bin"_L1,
        u"/Library/Frameworks/Python.framework/Versions/Current/bin"_s,
        u"/usr/bin"_s,
        u"/bin"_s,
    };
    folders += path.split(u':', Qt::SkipEmptyParts);
    folders.removeDuplicates();
    return folders;
}

} // namespace velto
