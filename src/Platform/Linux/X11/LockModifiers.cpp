#include "Platform/Linux/X11/LockModifiers.h"

#include <algorithm>

namespace velto {

namespace {

// Values of X11/keysymdef.h.
constexpr std::array<xcb_keysym_t, 5> kLockSymbols{
    0xffe5, // Caps_Lock
    0xffe6, // Shift_Lock
    0xff7f, // Num_Lock
    0xff14, // Scroll_Lock
    0xfe0f, // ISO_Level5_Lock
};
constexpr std::array<xcb_keysym_t, 2> kAltSymbols{
    0xffe9, // Alt_L
    0xffea, // Alt_R
};

template <std::size_t N> bool holdsOne(const std::vector<xcb_keysym_t> &symbols, const std::array<xcb_keysym_t, N> &wanted)
{
    return std::find_first_of(symbols.begin(), symbols.end(), wanted.begin(), wanted.end()) != symbols.end();
}

} // namespace

quint16 altModifier(const ModifierSymbols &symbols)
{
    // Shift and Lock, the first two, can't serve as Alt in a grab.
    for (std::size_t i = 2; i < symbols.size(); ++i)
        if (holdsOne(symbols[i], kAltSymbols))
            return quint16(1U << i);
    return XCB_MOD_MASK_1;
}

quint16 lockModifiers(const ModifierSymbols &symbols)
{
    // The Lock modifier is a lock, whatever key it is on.
    unsigned locks = XCB_MOD_MASK_LOCK;
    for (std::size_t i = 0; i < symbols.size(); ++i)
        if (holdsOne(symbols[i], kLockSymbols))
            locks |= 1U << i;
    return quint16(locks & ~(unsigned(XCB_MOD_MASK_SHIFT) | XCB_MOD_MASK_CONTROL | altModifier(symbols)));
}

QList<quint16> lockCombinations(quint16 locks)
{
    QList<quint16> combinations{0};
    for (unsigned subset = locks; subset != 0; subset = (subset - 1) & locks)
        combinations.append(quint16(subset));
    return combinations;
}

} // namespace velto
