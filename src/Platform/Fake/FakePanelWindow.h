#pragma once

#include "Platform/Displays.h"
#include "Platform/HotKey.h"
#include "Platform/PanelWindow.h"
#include "Platform/Session.h"
#include "Platform/StatusItem.h"

#include <utility>

// What the panel's window needs of a desktop, faked as in FakePlatform.h.

namespace velto {

class FakeHotKey final : public HotKey {
    Q_OBJECT
public:
    bool available = true;
    std::function<void()> press;

    Support support() const override { return {}; }
    QString keys() const override { return {}; }
    bool registerHotKey(std::function<void()> action) override
    {
        if (available)
            press = std::move(action);
        return available;
    }
};

class FakeStatusItem final : public StatusItem {
public:
    std::vector<MenuItem> menu;
    std::function<void()> openMenu;

    void show(const QString &, std::vector<MenuItem> items, std::function<void()> elsewhere) override
    {
        menu = std::move(items);
        openMenu = std::move(elsewhere);
    }
};

class FakeSession final : public Session {
    Q_OBJECT
public:
    bool lockedNow = false;

    bool locked() const override { return lockedNow; }
    void setLocked(bool locked)
    {
        lockedNow = locked;
        Q_EMIT lockedChanged();
    }
};

class FakeDisplays final : public Displays {
    Q_OBJECT
public:
    QList<Display> displays;

    QList<Display> all() const override { return displays; }
    void setAll(const QList<Display> &now)
    {
        displays = now;
        Q_EMIT changed();
    }
};

class FakePanelWindow final : public PanelWindow {
    Q_OBJECT
public:
    QList<QRect> frames;
    bool focused = false;
    bool shown = false;
    bool alpha = true;
    bool wide = false;
    std::optional<QPoint> pointerNow;

    void adopt(QWindow *) override { }
    void place(const QRect &frame) override { frames.append(frame); }
    void show() override { shown = true; }
    void hide() override { shown = false; }
    void raise() override { }
    std::optional<QPoint> pointer() const override { return pointerNow; }
    void takeFocus() override { focused = true; }
    void returnFocus() override { focused = false; }
    bool composited() const override { return alpha; }
    bool keepsWidth() const override { return wide; }
};

} // namespace velto
