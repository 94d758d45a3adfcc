#pragma once

#include <QCoreApplication>

namespace velto {

/// The texts of functions that belong to no class: Words::tr("…"). What an entry of a catalogue is for is told by its text alone.
class Words {
    Q_DECLARE_TR_FUNCTIONS(velto::Words)
};

} // namespace velto
