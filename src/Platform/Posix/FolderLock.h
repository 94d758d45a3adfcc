#pragma once

#include "Platform/Posix/Descriptor.h"

#include <QString>

namespace velto {

/// A folder that one program at a time holds, even if somebody deletes it meanwhile: for that there is a second lock, on a file
/// named after the folder in the user's runtime folder. The system releases both when the program ends, however it ends, and no
/// child of the program inherits them.
class FolderLock {
public:
    explicit FolderLock(QString folder);

    /// Takes it for as long as this object lives; makes the folder (0700) if it is missing. False only if another program
    /// holds it: where locking isn't possible, nobody is kept from starting.
    bool take();

private:
    QString m_folder;
    Descriptor m_lock;
    Descriptor m_second;
};

} // namespace velto
