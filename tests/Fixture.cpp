#include "Fixture.h"

#include <QFile>

namespace velto {

QByteArray fixture(const QByteArray &path)
{
    QFile file(QFile::decodeName(VELTO_FIXTURES "/" + path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no fixture %s", path.constData());
    return file.readAll();
}

} // namespace velto
