#pragma once

#include <QByteArray>

namespace velto {

/// What stands in a file of tests/fixtures, as a tool or a service once sent it.
QByteArray fixture(const QByteArray &path);

} // namespace velto
