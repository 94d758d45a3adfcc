#pragma once

#include <QFile>

namespace velto {

/// What stands in a file of tests/fixtures, as a tool or a service once sent it.
inline QByteArray fixture(const QByteArray &path)
{
    QFile file(QFile::decodeName(VELTO_FIXTURES "/" + path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no fixture %s", path.constData());
    return file.readAll();
}

} // namespace velto
