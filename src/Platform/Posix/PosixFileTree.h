#pragma once

#include "Platform/FileTree.h"

namespace velto {

/// One readdir for each folder and one stat for each file whose name fits.
class PosixFileTree final : public FileTree {
public:
    void each(const QString &folder, std::string_view suffix, const std::function<void(const TreeFile &)> &found) const override;
    std::unique_ptr<FolderChanges> changesIn(const QString &folder) const override;
};

} // namespace velto
