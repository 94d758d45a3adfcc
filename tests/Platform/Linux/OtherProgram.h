#pragma once

#include "Platform/Linux/X11/XcbServer.h"

#include <QByteArray>
#include <QRect>
#include <QTest>
#include <algorithm>
#include <span>
#include <vector>

/// Another program on the same display: a connection of its own, with windows that the window manager manages. It waits for the
/// window manager when it opens a window and when it ends: a window that goes before it is managed would stay in the manager's
/// list for ever, and the next connection's windows have the same ids.
class OtherProgram {
public:
    OtherProgram()
        : m_connection(xcb_connect(nullptr, nullptr))
        , m_root(xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root)
    {
    }
    OtherProgram(const OtherProgram &) = delete;
    OtherProgram &operator=(const OtherProgram &) = delete;
    ~OtherProgram()
    {
        for (const auto window : m_managed)
            close(window);
        awaitManager([this] {
            const auto known = numbers(m_root, atom("_NET_CLIENT_LIST"));
            return std::ranges::find_first_of(known, m_managed) == known.end();
        });
        xcb_disconnect(m_connection);
    }

    xcb_connection_t *connection() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    xcb_atom_t atom(const QByteArray &name) const
    {
        const velto::XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, false, quint16(name.size()), name.constData()), nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    /// Opens and shows a window with that WM_CLASS ("instance\0class\0"); not `managed`: one like a screen locker's.
    xcb_window_t open(const QRect &frame, const QByteArray &windowClass, bool fullScreen = false, bool managed = true)
    {
        const auto window = xcb_generate_id(m_connection);
        const quint32 values[] = {0x336699, managed ? 0U : 1U};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, m_root, qint16(frame.x()), qint16(frame.y()),
                          quint16(frame.width()), quint16(frame.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values);
        name(window, windowClass);
        if (fullScreen) {
            const auto state = atom("_NET_WM_STATE_FULLSCREEN");
            xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32, 1, &state);
        }
        xcb_map_window(m_connection, window);
        xcb_flush(m_connection);
        if (managed) {
            m_managed.push_back(window);
            awaitManager([this, window] { return !numbers(window, atom("WM_STATE")).empty(); });
        }
        return window;
    }
    void name(xcb_window_t window, const QByteArray &windowClass)
    {
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            quint32(windowClass.size()), windowClass.constData());
        xcb_flush(m_connection);
    }
    void close(xcb_window_t window)
    {
        xcb_destroy_window(m_connection, window);
        xcb_flush(m_connection);
    }
    void raise(xcb_window_t window)
    {
        const quint32 above = XCB_STACK_MODE_ABOVE;
        xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        xcb_flush(m_connection);
    }
    xcb_window_t focus() const
    {
        const velto::XcbReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
        return reply ? reply->focus : velto::kNoWindow;
    }
    /// The topmost visible window.
    xcb_window_t top() const
    {
        const velto::XcbReply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, m_root), nullptr));
        auto top = velto::kNoWindow;
        const auto *children = xcb_query_tree_children(tree.get());
        for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
            const velto::XcbReply<xcb_get_window_attributes_reply_t> attributes(
                xcb_get_window_attributes_reply(m_connection, xcb_get_window_attributes(m_connection, children[i]), nullptr));
            if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE
                && attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT)
                top = children[i];
        }
        return top;
    }

private:
    static void awaitManager(const std::function<bool()> &done)
    {
        if (!QTest::qWaitFor(done))
            qWarning("the window manager is late");
    }
    std::vector<quint32> numbers(xcb_window_t window, xcb_atom_t property) const
    {
        const velto::XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            m_connection, xcb_get_property(m_connection, false, window, property, XCB_ATOM_ANY, 0, 1024), nullptr));
        if (!reply || reply->format != 32)
            return {};
        const std::span list(static_cast<const quint32 *>(xcb_get_property_value(reply.get())), reply->value_len);
        return {list.begin(), list.end()};
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root;
    std::vector<xcb_window_t> m_managed;
};
