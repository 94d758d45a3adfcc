// A pointer and a keyboard for compositors without input devices (wlr-virtual-pointer, virtual-keyboard). Both stay until the end
// of the input, since with each new keyboard every window reads its keymap again. Reads lines:
//   size W H        the size of the desktop that places refer to
//   move X Y        to a place on the desktop
//   press B, release B   evdev's number of a button: 272 is the left one
//   keys C...       evdev's numbers of keys, pressed together
//   text T          small letters and spaces of a US keyboard
// and answers each with "ok" once the compositor has it.
#include "virtual-keyboard-unstable-v1.h"
#include "wlr-virtual-pointer-unstable-v1.h"

#include <chrono>
#include <cstring>
#include <iostream>
#include <linux/input-event-codes.h>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <vector>
#include <xkbcommon/xkbcommon.h>

using namespace std::chrono_literals;

namespace {

struct Globals {
    zwlr_virtual_pointer_manager_v1 *pointers = nullptr;
    zwp_virtual_keyboard_manager_v1 *keyboards = nullptr;
    wl_seat *seat = nullptr;
};

template <typename Object> Object *bound(wl_registry *registry, uint32_t name, const wl_interface &interface)
{
    return static_cast<Object *>(wl_registry_bind(registry, name, &interface, 1));
}

void global(void *data, wl_registry *registry, uint32_t name, const char *interface, uint32_t)
{
    auto &globals = *static_cast<Globals *>(data);
    const std::string_view wanted(interface);
    if (wanted == zwlr_virtual_pointer_manager_v1_interface.name)
        globals.pointers = bound<zwlr_virtual_pointer_manager_v1>(registry, name, zwlr_virtual_pointer_manager_v1_interface);
    else if (wanted == zwp_virtual_keyboard_manager_v1_interface.name)
        globals.keyboards = bound<zwp_virtual_keyboard_manager_v1>(registry, name, zwp_virtual_keyboard_manager_v1_interface);
    else if (wanted == wl_seat_interface.name)
        globals.seat = bound<wl_seat>(registry, name, wl_seat_interface);
}

void gone(void *, wl_registry *, uint32_t) { }

uint32_t now()
{
    return uint32_t(
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count());
}

int codeOf(char letter)
{
    constexpr std::string_view kRows[]{"qwertyuiop", "asdfghjkl", "zxcvbnm"};
    constexpr int kFirst[]{KEY_Q, KEY_A, KEY_Z};
    for (int row = 0; row < 3; ++row)
        if (const auto at = kRows[row].find(letter); at != std::string_view::npos)
            return kFirst[row] + int(at);
    return KEY_SPACE;
}

class Keyboard {
public:
    Keyboard(wl_display *display, zwp_virtual_keyboard_v1 *keyboard)
        : m_display(display)
        , m_keyboard(keyboard)
    {
        const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
        auto *map = xkb_keymap_new_from_names(xkb_context_new(XKB_CONTEXT_NO_FLAGS), &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
        m_state = xkb_state_new(map);
        const std::string text = xkb_keymap_get_as_string(map, XKB_KEYMAP_FORMAT_TEXT_V1);
        const int file = memfd_create("keymap", 0);
        if (::write(file, text.c_str(), text.size() + 1) == ssize_t(text.size() + 1))
            zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, uint32_t(text.size() + 1));
        wl_display_roundtrip(m_display);
        ::close(file);
    }
    void key(int code, bool down)
    {
        constexpr int kXkbOffset = 8;
        xkb_state_update_key(m_state, xkb_keycode_t(code + kXkbOffset), down ? XKB_KEY_DOWN : XKB_KEY_UP);
        zwp_virtual_keyboard_v1_key(m_keyboard, now(), uint32_t(code), down ? 1 : 0);
        zwp_virtual_keyboard_v1_modifiers(m_keyboard, xkb_state_serialize_mods(m_state, XKB_STATE_MODS_DEPRESSED), 0, 0, 0);
        wl_display_roundtrip(m_display);
    }
    void together(const std::vector<int> &codes)
    {
        for (const int code : codes)
            key(code, true);
        std::this_thread::sleep_for(30ms);
        for (auto code = codes.rbegin(); code != codes.rend(); ++code)
            key(*code, false);
        std::this_thread::sleep_for(15ms);
    }

private:
    wl_display *m_display;
    zwp_virtual_keyboard_v1 *m_keyboard;
    xkb_state *m_state = nullptr;
};

} // namespace

int main()
{
    auto *display = wl_display_connect(nullptr);
    if (!display)
        return 1;
    Globals globals;
    const wl_registry_listener listener{global, gone};
    wl_registry_add_listener(wl_display_get_registry(display), &listener, &globals);
    wl_display_roundtrip(display);
    if (!globals.pointers || !globals.keyboards)
        return 2;
    auto *pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(globals.pointers, globals.seat);
    Keyboard keyboard(display, zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(globals.keyboards, globals.seat));
    uint32_t width = 1;
    uint32_t height = 1;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::string what;
        words >> what;
        if (what == "text") {
            for (const char letter : line.substr(what.size() + 1))
                keyboard.together({codeOf(letter)});
        } else if (what == "keys") {
            std::vector<int> codes;
            for (int code = 0; words >> code;)
                codes.push_back(code);
            keyboard.together(codes);
        } else {
            uint32_t x = 0;
            uint32_t y = 0;
            words >> x >> y;
            if (what == "size") {
                width = x;
                height = y;
            } else if (what == "move") {
                zwlr_virtual_pointer_v1_motion_absolute(pointer, now(), x, y, width, height);
            } else {
                zwlr_virtual_pointer_v1_button(pointer, now(), x, what == "press" ? 1 : 0);
            }
            zwlr_virtual_pointer_v1_frame(pointer);
            wl_display_roundtrip(display);
        }
        std::cout << "ok" << std::endl;
    }
    return 0;
}
