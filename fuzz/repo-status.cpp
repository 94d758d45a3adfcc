// Any output of `git status`: the count of unsaved changes is what a plain scan of the lines counts.

#include "Feeds/Repositories/RepoState.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView printed(data, qsizetype(size));
    const velto::RepoState repo = velto::parseStatus(u"/home/me/src/app"_s, printed);
    qint64 dirty = 0;
    QString branch = u"?"_s;
    for (const QByteArray &line : printed.toByteArray().split('\n')) {
        dirty += !line.isEmpty() && !line.startsWith('#') ? 1 : 0;
        if (line.startsWith("# branch.head "))
            branch = QString::fromUtf8(line.mid(14));
    }
    if (repo.dirty != dirty || repo.branch != branch || repo.name != "app"_L1)
        std::abort();
    const bool isEmpty = repo.dirty <= 0 && repo.ahead <= 0;
    if (repo.needsWork() == isEmpty || repo.summary().isEmpty() != isEmpty)
        std::abort();
    return 0;
}
