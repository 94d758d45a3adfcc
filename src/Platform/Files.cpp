#include "Platform/Files.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velto {

std::variant<QString, FileError> keepCopy(Files &files, const QString &prefix, const QDateTime &now, const QByteArray &bytes)
{
    constexpr int kAttempts = 100;
    const QString name = prefix + now.toUTC().toString(Qt::ISODate).replace(':'_L1, '-'_L1);
    // If two fall into the same second, the earlier copy is the one to keep.
    for (int attempt = 1; attempt <= kAttempts; ++attempt) {
        QString copy = attempt == 1 ? name : name + u"-%1"_s.arg(attempt);
        const auto standing = files.read(copy, 0);
        const auto *error = std::get_if<FileError>(&standing);
        if (!error || !error->missing)
            continue;
        if (auto failure = files.replace(copy, bytes))
            return *std::move(failure);
        return copy;
    }
    return FileError{
        QCoreApplication::translate("Files", "There are too many copies called %1.").arg(QFileInfo(name).fileName())};
}

} // namespace velto
