#pragma once

#include "Platform/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

/// Files without durability, for what has a test of its own elsewhere.
class DiskFiles final : public velto::Files {
public:
    std::variant<QByteArray, velto::FileError> read(const QString &path, qint64 maximum) const override
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return velto::FileError{file.errorString(), true};
        return file.read(maximum);
    }
    std::optional<velto::FileError> replace(const QString &path, const QByteArray &bytes, const std::function<bool()> &) override
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            return velto::FileError{file.errorString()};
        return std::nullopt;
    }
};
