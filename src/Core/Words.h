#pragma once

#include <QCoreApplication>

namespace velto {

/// The texts of functions that belong to no class: Words::tr("…"). A catalogue finds its entry by the text alone.
class Words {
    Q_DECLARE_TR_FUNCTIONS(velto::Words)
};

} // namespace velto
