// Watches, from outside, the first window that appears at the top of the screen, and says when it was mapped, painted, moved and
// drawn into. Each line: what, CLOCK_MONOTONIC nanoseconds, window, x, y, width, height, and the nanoseconds that the main thread
// of the window's program has worked (0 before its window is known). Both programs of a comparison are watched the same way.
// "painted" is the first moment at which a third of the pixels around the window's middle is opaque black: before it, a window
// shows what lay under it. The strip's window can be far wider than its black.
//
// The kinds: "ready" (now start the program), "mapped", "painted", "configured", "drawn". Ends with its standard output or by
// SIGTERM.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

namespace {

struct Free {
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc): xcb's replies come from malloc
    void operator()(void *memory) const { std::free(memory); }
};
template <typename T> using Reply = std::unique_ptr<T, Free>;

struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

constexpr int kTopEdge = 8; // the strip touches the top; other windows of a desktop don't
constexpr int kLooked = 90; // pixels, within the narrowest strip
constexpr int kSmallest = 20; // helper windows of toolkits and window managers are a few pixels wide,
constexpr int kHighest = 200; // and those of compositors as large as the screen

/// The processor time of a process's main thread, in nanoseconds. The file stays open, since it is read at each frame.
class Work {
public:
    Work() = default;
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;
    ~Work() { ::close(m_file); }

    void follow(std::uint32_t process)
    {
        const std::string path = "/proc/" + std::to_string(process) + "/task/" + std::to_string(process) + "/schedstat";
        m_file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    }
    long long nanoseconds() const
    {
        std::array<char, 64> text{};
        const auto length = ::pread(m_file, text.data(), text.size() - 1, 0);
        return length > 0 ? std::atoll(text.data()) : 0;
    }

private:
    int m_file = -1;
};

class Watcher {
public:
    explicit Watcher(xcb_connection_t *connection)
        : m_connection(connection)
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root)
    {
    }

    bool start()
    {
        const auto *extension = xcb_get_extension_data(m_connection, &xcb_damage_id);
        if (!extension || !extension->present) {
            return false;
        }
        m_damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
        const Reply<xcb_damage_query_version_reply_t> version(
            xcb_damage_query_version_reply(m_connection, xcb_damage_query_version(m_connection, 1, 1), nullptr));
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(m_connection);
        return version && say("ready", m_root, {});
    }

    bool handle(const xcb_generic_event_t *event)
    {
        const auto type = static_cast<std::uint8_t>(event->response_type & 0x7f);
        if (type == XCB_CREATE_NOTIFY && m_window == XCB_NONE) {
            watch(reinterpret_cast<const xcb_create_notify_event_t *>(event)->window);
        }
        if (type == XCB_MAP_NOTIFY && m_window == XCB_NONE) {
            return mapped(reinterpret_cast<const xcb_map_notify_event_t *>(event)->window);
        }
        if (type == XCB_CONFIGURE_NOTIFY) {
            const auto *change = reinterpret_cast<const xcb_configure_notify_event_t *>(event);
            if (change->window == m_window && m_window != XCB_NONE) {
                m_box = {change->x, change->y, change->width, change->height};
                return say("configured", m_window, m_box);
            }
        }
        if (type == m_damageEvent) {
            const auto *damage = reinterpret_cast<const xcb_damage_notify_event_t *>(event);
            xcb_damage_subtract(m_connection, damage->damage, XCB_NONE, XCB_NONE);
            xcb_flush(m_connection);
            return damage->drawable != m_window
                || drawn({damage->area.x, damage->area.y, damage->area.width, damage->area.height});
        }
        return true;
    }

private:
    bool say(const char *what, xcb_window_t window, const Box &box) const
    {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        const auto stamp = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
        std::printf("%s %lld %u %d %d %d %d %lld\n", what, static_cast<long long>(stamp), window, box.x, box.y, box.width,
                    box.height, m_work.nanoseconds());
        return std::fflush(stdout) == 0;
    }

    std::uint32_t processOf(xcb_window_t window) const
    {
        const Reply<xcb_intern_atom_reply_t> atom(
            xcb_intern_atom_reply(m_connection, xcb_intern_atom(m_connection, 0, 11, "_NET_WM_PID"), nullptr));
        const Reply<xcb_get_property_reply_t> value(xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, 0, window, atom ? atom->atom : XCB_NONE, XCB_ATOM_CARDINAL, 0, 1),
            nullptr));
        const bool there = value && xcb_get_property_value_length(value.get()) == sizeof(std::uint32_t);
        return there ? *static_cast<const std::uint32_t *>(xcb_get_property_value(value.get())) : 0;
    }

    // From its creation on, so that no drawing is missed.
    void watch(xcb_window_t window)
    {
        xcb_damage_create(m_connection, xcb_generate_id(m_connection), window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        xcb_flush(m_connection);
    }

    bool mapped(xcb_window_t window)
    {
        const Reply<xcb_get_geometry_reply_t> at(
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
        if (!at || at->y > kTopEdge || at->y + at->height < 1 || at->width < kSmallest || at->height < kSmallest
            || at->height > kHighest) {
            return true;
        }
        m_window = window;
        m_work.follow(processOf(window));
        m_box = {at->x, at->y, at->width, at->height};
        return say("mapped", window, m_box) && (!showsBlack() || paintedNow());
    }

    bool drawn(const Box &area)
    {
        if (!m_painted && showsBlack()) {
            return paintedNow();
        }
        return say("drawn", m_window, area);
    }

    bool paintedNow()
    {
        m_painted = true;
        return say("painted", m_window, m_box);
    }

    bool showsBlack() const
    {
        const auto width = static_cast<std::uint16_t>(std::min<int>(m_box.width, kLooked));
        const auto left = static_cast<std::int16_t>((m_box.width - width) / 2);
        const auto middle = static_cast<std::int16_t>(m_box.height / 2);
        const Reply<xcb_get_image_reply_t> image(xcb_get_image_reply(
            m_connection, xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, left, middle, width, 1, ~0U),
            nullptr));
        if (!image) {
            return false;
        }
        const auto *bytes = xcb_get_image_data(image.get());
        const int pixels = xcb_get_image_data_length(image.get()) / 4;
        int black = 0;
        for (int i = 0; i < pixels; ++i) {
            const auto *pixel = bytes + static_cast<std::ptrdiff_t>(i) * 4;
            const bool opaque = image->depth < 32 || pixel[3] == 0xff;
            black += opaque && pixel[0] == 0 && pixel[1] == 0 && pixel[2] == 0 ? 1 : 0;
        }
        return black * 3 >= pixels;
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    xcb_window_t m_window = XCB_NONE;
    std::uint8_t m_damageEvent = 0;
    Box m_box;
    Work m_work;
    bool m_painted = false;
};

} // namespace

int main()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(xcb_connect(nullptr, nullptr), xcb_disconnect);
    if (xcb_connection_has_error(connection.get())) {
        std::fputs("watch-window: no display\n", stderr);
        return 1;
    }
    Watcher watcher(connection.get());
    if (!watcher.start()) {
        std::fputs("watch-window: this display has no damage extension\n", stderr);
        return 1;
    }
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection.get())}) {
        if (!watcher.handle(event.get())) {
            break;
        }
    }
    return 0;
}
