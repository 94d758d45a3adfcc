#pragma once

#include <QByteArray>

namespace velto {

/// The content of a file in tests/fixtures, as a tool or a service once sent it.
QByteArray fixture(const QByteArray &path);

} // namespace velto
