#pragma once

#include "Core/SourceState.h"

#include <QtQml/qqml.h>

namespace velto {

/// The kinds of a feed's state for views, as SourceState.Ready and so on, without Core having to know QML.
namespace foreignSourceState {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(velto::SourceState)
QML_NAMED_ELEMENT(SourceState)
} // namespace foreignSourceState

} // namespace velto
