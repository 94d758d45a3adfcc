#pragma once

#include "Platform/FileTree.h"
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

/// The folders of that disk. A file's time is made of what it holds.
class FakeFileTree final : public FileTree {
public:
    explicit FakeFileTree(const FakeFiles &files)
        : m_files(files)
    {
    }

    void each(const QString &folder, std::string_view suffix, const std::function<void(const TreeFile &)> &found) const override
    {
        for (auto file = m_files.contents.cbegin(); file != m_files.contents.cend(); ++file) {
            const std::string path = file.key().toStdString();
            if (path.starts_with(folder.toStdString() + '/') && path.ends_with(suffix))
                found({path, qint64(qHash(file.value())), quint64(file.value().size())});
        }
    }
    std::unique_ptr<FolderChanges> changesIn(const QString & /*folder*/) const override { return nullptr; }

private:
    const FakeFiles &m_files;
};

} // namespace velto
