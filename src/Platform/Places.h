#pragma once

#include <QString>

namespace velto {

/// Where things are on this machine. Absolute paths without a trailing slash.
struct Places {
    QString home; ///< the user's home folder
    QString configuration; ///< Velto's own settings
    QString data; ///< Velto's own documents
    QString temporary; ///< short-lived files
    QString downloads = {}; ///< where browsers put what the user downloads
};

} // namespace velto
