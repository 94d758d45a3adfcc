// The lower bound under Wayland: what a layer surface of the strip's size costs, with the QML of bare-window. Ends on SIGTERM.
#include "Platform/Linux/Wayland/LayerSurface.h"
#include "Platform/Linux/Wayland/WaylandWindowSystem.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

int main(int argc, char **argv)
{
    using velto::LayerSurface;
    velto::prepareLayers();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication app(argc, argv);
    velto::layersPrepared();
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("visible"), false}});
    engine.load(QUrl(QStringLiteral("qrc:/bare-window.qml")));
    auto *window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    velto::WaylandServer server;
    if (!window || !server.exists())
        return 1;
    LayerSurface surface(server, *window, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, LayerSurface::Place::TopCentre);
    surface.resize(window->size());
    return surface.show(window->screen()) ? QGuiApplication::exec() : 1;
}
