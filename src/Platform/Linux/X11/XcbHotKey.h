#pragma once

#include "Platform/HotKey.h"
#include "Platform/Linux/X11/XcbServer.h"

#include <QList>
#include <QObject>

namespace velto {

/// Control-Alt-N, grabbed on the root window once for each combination of lock modifiers, and again when the keyboard changes.
class XcbHotKey final : public HotKey {
    Q_OBJECT
public:
    explicit XcbHotKey(XcbServer &server, QObject *parent = nullptr);
    ~XcbHotKey() override;

    bool registerHotKey(std::function<void()> action) override;
    Support support() const override;

private:
    struct Keys {
        QList<xcb_keycode_t> codes;
        QList<quint16> modifiers;
        bool operator==(const Keys &) const = default;
    };

    Keys keysNow() const;
    bool grab(const Keys &keys);
    void release();
    void regrabSoon();
    void keyChanged(bool pressed, xcb_keycode_t key, quint32 time);

    XcbServer &m_server;
    std::function<void()> m_action;
    Keys m_grabbed;
    bool m_regrabPending = false;
    bool m_down = false;
    quint32 m_lastEvent = 0; ///< the server's time, in milliseconds
};

} // namespace velto
