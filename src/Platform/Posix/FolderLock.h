#pragma once

#include "Platform/Posix/Descriptor.h"

#include <QString>

namespace velto {

/// A folder that one program at a time holds. The system gives it up when the program ends, however it ends, and no child of
/// the program inherits it.
class FolderLock {
public:
    explicit FolderLock(QString folder);

    /// Takes it for as long as this object lives; makes the folder (0700) if it is missing. False only if another program
    /// holds it: where nothing can be locked, nobody is kept from starting.
    bool take();

private:
    QString m_folder;
    Descriptor m_lock;
};

} // namespace velto
