#include "Platform/Linux/Wayland/LayerPanelWindow.h"

#include "Platform/Clock.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>

using namespace std::chrono_literals;

namespace velto {

namespace {

// The longest time from the compositor's answer until the toolkit says who has the keyboard.
constexpr auto kArrival = 10ms;
// The longest time a compositor takes to take the keyboard back, judging by those that were tried.
constexpr auto kHandover = 150ms;
// Pause after a compositor closed the surface although its output is still there.
constexpr auto kRest = 1000ms;

/// Null if that place is on no visible output.
QScreen *screenAt(const QRect &frame)
{
    auto *screen = QGuiApplication::screenAt(QPoint(frame.center().x(), frame.top()));
    return screen && !screen->name().isEmpty() ? screen : nullptr;
}

} // namespace

LayerPanelWindow::LayerPanelWindow(WaylandServer &server, Clock &clock, QObject *parent)
    : PanelWindow(parent)
    , m_server(server)
    , m_clock(clock)
{
}

LayerPanelWindow::~LayerPanelWindow() = default;

void LayerPanelWindow::adopt(QWindow *window)
{
    m_window = window;
    auto format = window->requestedFormat();
    format.setAlphaBufferSize(8);
    window->setFormat(format);
    window->installEventFilter(this);
    m_strip =
        std::make_unique<LayerSurface>(m_server, *window, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, LayerSurface::Place::TopCentre);
    connect(window, &QWindow::activeChanged, this, &LayerPanelWindow::activeChanged);
    connect(m_strip.get(), &LayerSurface::keyboardSettled, this, [this] {
        if (m_keyboardWanted && !m_window->isActive())
            m_patience = m_clock.after(kArrival, [this] { insist(); });
    });
    connect(m_strip.get(), &LayerSurface::closed, this, [this] {
        m_pointer.reset();
        // If its output is gone, a place on another one follows; otherwise this is still the right place.
        m_again = m_clock.after(kRest, [this] { bringUp(); });
    });
}

void LayerPanelWindow::place(const QRect &frame)
{
    m_frame = frame;
    if (!m_strip)
        return;
    if (m_strip->shown() && m_strip->screen() != screenAt(frame))
        m_strip->hide();
    // The window is centred, so a change of its width moves it under a resting pointer.
    if (m_pointer)
        m_pointer->rx() += (frame.width() - m_window->width()) / 2;
    m_strip->resize(frame.size());
    bringUp();
}

void LayerPanelWindow::show()
{
    m_wanted = true;
    bringUp();
}

void LayerPanelWindow::hide()
{
    m_wanted = false;
    m_again.reset();
    returnFocus();
    m_pointer.reset();
    if (m_strip)
        m_strip->hide();
}

void LayerPanelWindow::bringUp()
{
    m_again.reset();
    if (!m_wanted || !m_strip || m_strip->shown())
        return;
    if (m_strip->show(screenAt(m_frame)))
        writeBlur();
}

void LayerPanelWindow::takeFocus()
{
    m_keyboardWanted = m_strip != nullptr;
    if (!m_strip || m_window->isActive())
        return;
    m_strip->setKeyboard(LayerSurface::Keyboard::OnDemand);
}

/// Some compositors give the keyboard "on demand" only after a press, and the panel may have been opened by a key.
void LayerPanelWindow::insist()
{
    if (m_keyboardWanted && !m_window->isActive() && m_strip->keyboard() == LayerSurface::Keyboard::OnDemand)
        m_strip->setKeyboard(LayerSurface::Keyboard::Exclusive);
}

void LayerPanelWindow::returnFocus()
{
    m_patience.reset();
    if (!std::exchange(m_keyboardWanted, false))
        return;
    m_strip->setKeyboard(LayerSurface::Keyboard::None);
    m_patience = m_clock.after(kHandover, [this] { giveUpSurface(); });
}

/// KWin 5 doesn't take the keyboard back until the surface is gone.
void LayerPanelWindow::giveUpSurface()
{
    if (m_keyboardWanted || !m_window->isActive())
        return;
    m_strip->hide();
    bringUp();
}

void LayerPanelWindow::activeChanged()
{
    if (m_window->isActive() == m_keyboardWanted)
        m_patience.reset();
    else if (m_window->isActive()) // the keyboard came after it was given back
        m_patience = m_clock.after(kHandover, [this] { giveUpSurface(); });
}

bool LayerPanelWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window) {
        if (event->type() == QEvent::Leave)
            m_pointer.reset();
        else if (event->type() == QEvent::Enter)
            m_pointer = static_cast<QEnterEvent *>(event)->position().toPoint();
        else if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress
                 || event->type() == QEvent::MouseButtonRelease)
            m_pointer = static_cast<QMouseEvent *>(event)->position().toPoint();
    }
    return PanelWindow::eventFilter(watched, event);
}

void LayerPanelWindow::setBlurBehind(const QList<QRect> &areas)
{
    if (std::exchange(m_blur, areas) != areas)
        writeBlur();
}

/// KWin's own protocol; elsewhere the user can enable blur for the surface's name.
void LayerPanelWindow::writeBlur()
{
    auto *surface = m_strip ? m_strip->surface() : nullptr;
    auto *manager = surface ? m_server.bind<org_kde_kwin_blur_manager>(org_kde_kwin_blur_manager_interface, 1) : nullptr;
    if (!manager)
        return;
    if (m_blur.isEmpty()) {
        org_kde_kwin_blur_manager_unset(manager, surface);
    } else {
        auto *region = wl_compositor_create_region(m_server.compositor());
        for (const auto &area : std::as_const(m_blur))
            wl_region_add(region, area.x(), area.y(), area.width(), area.height());
        auto *blur = org_kde_kwin_blur_manager_create(manager, surface);
        org_kde_kwin_blur_set_region(blur, region);
        org_kde_kwin_blur_commit(blur);
        org_kde_kwin_blur_release(blur);
        wl_region_destroy(region);
    }
    org_kde_kwin_blur_manager_destroy(manager);
    m_strip->commit();
}

void LayerPanelWindow::showBehind(QWindow *window, const QRect &frame)
{
    m_behind =
        std::make_unique<LayerSurface>(m_server, *window, ZWLR_LAYER_SHELL_V1_LAYER_BOTTOM, LayerSurface::Place::TopCentre);
    m_behind->resize(frame.size());
    m_behind->show(screenAt(frame));
}

} // namespace velto
