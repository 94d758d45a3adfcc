#pragma once

#include "Platform/Files.h"

#include <QHash>
#include <QString>

namespace velto {

/// A disk in memory.
class FakeFiles final : public Files {
public:
    QHash<QString, QByteArray> contents;
    /// Once set, nothing can be written any more, for this reason.
    QString failure;

    std::variant<QByteArray, FileError> read(const QString &path, qint64 maximum) const override
    {
        const auto found = contents.constFind(path);
        if (found == contents.cend())
            return FileError{QStringLiteral("%1: No such file or directory").arg(path), true};
        if (found->size() > maximum)
            return FileError{QStringLiteral("%1 is too large").arg(path)};
        return *found;
    }
    std::optional<FileError> replace(const QString &path, const QByteArray &bytes, const std::function<bool()> &stillWanted,
                                     Mode /*mode*/) override
    {
        if (!failure.isEmpty())
            return FileError{failure};
        if (stillWanted && !stillWanted())
            return FileError{QStringLiteral("%1 was changed meanwhile").arg(path)};
        contents.insert(path, bytes);
        return std::nullopt;
    }
    void sweep(const QString &) override { }
};

} // namespace velto
