#include "Platform/Linux/Wayland/NativeHandles.h"

#include <QGuiApplication>
#include <QPointingDevice>
#include <qpa/qplatformnativeinterface.h>
#include <qpa/qwindowsysteminterface.h>

namespace velto {

namespace {

QPlatformNativeInterface *native()
{
    return QGuiApplication::platformName().startsWith(QLatin1StringView("wayland")) ? QGuiApplication::platformNativeInterface()
                                                                                    : nullptr;
}

} // namespace

wl_display *nativeDisplay()
{
    auto *interface = native();
    return interface ? static_cast<wl_display *>(interface->nativeResourceForIntegration("wl_display")) : nullptr;
}

wl_output *nativeOutput(QScreen *screen)
{
    auto *interface = native();
    return interface ? static_cast<wl_output *>(interface->nativeResourceForScreen("output", screen)) : nullptr;
}

wl_surface *nativeSurface(QWindow *window)
{
    auto *interface = native();
    return interface ? static_cast<wl_surface *>(interface->nativeResourceForWindow("surface", window)) : nullptr;
}

void makePointerMouse()
{
    constexpr int kButtons = 5;
    if (!native() || QPointingDevice::primaryPointingDevice()->type() == QInputDevice::DeviceType::Mouse)
        return;
    using Capability = QInputDevice::Capability;
    QWindowSystemInterface::registerInputDevice(
        new QPointingDevice(QStringLiteral("mouse"), 0, QInputDevice::DeviceType::Mouse, QPointingDevice::PointerType::Generic,
                            Capability::Position | Capability::Hover | Capability::Scroll, 1, kButtons, {}, {}, qGuiApp));
}

void makeFocusWindow(QWindow &window)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    QWindowSystemInterface::handleFocusWindowChanged<QWindowSystemInterface::SynchronousDelivery>(&window);
#else
    QWindowSystemInterface::handleWindowActivated<QWindowSystemInterface::SynchronousDelivery>(&window);
#endif
}

} // namespace velto
