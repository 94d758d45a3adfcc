#pragma once

#include <QList>
#include <array>
#include <vector>
#include <xcb/xcb.h>

namespace velto {

/// The key symbols on each of the eight modifiers, in the X protocol's order: Shift, Lock, Control, Mod1 to Mod5.
using ModifierSymbols = std::array<std::vector<xcb_keysym_t>, 8>;

/// The modifiers that stay on after their key is let go (Caps Lock, Num Lock and their like), as a mask.
quint16 lockModifiers(const ModifierSymbols &symbols);
/// The modifier that the Alt key is on; Mod1 if the map doesn't tell.
quint16 altModifier(const ModifierSymbols &symbols);
/// Every combination of the modifiers in `locks`, none of them first. Eight modifiers make 256 at most.
QList<quint16> lockCombinations(quint16 locks);

} // namespace velto
