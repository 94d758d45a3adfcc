#include "Platform/Linux/QtDisplays.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr double kPlainThickness = 24;
constexpr double kHighestPanel = 80;
// Index of the top edge in _NET_WM_STRUT_PARTIAL.
constexpr std::size_t kStrutTop = 2;
constexpr std::size_t kStrutTopStart = 8;
constexpr std::size_t kStrutTopEnd = 9;

/// When the last output is gone, the toolkit puts an invisible screen in its place.
bool isReal(const QScreen *screen)
{
    return !screen->name().isEmpty() && !screen->geometry().isEmpty();
}

/// The toolkit's coordinates keep a screen's corner as the X server reports it and scale only its size.
QRect nativeGeometry(const QScreen *screen)
{
    const auto geometry = screen->geometry();
    return {geometry.topLeft(), (QSizeF(geometry.size()) * screen->devicePixelRatio()).toSize()};
}

} // namespace

int topPanelHeight(const QList<TopStrut> &struts, const QRect &native)
{
    int height = 0;
    for (const auto &strut : struts) {
        const bool across = strut.left <= native.right() && strut.right >= native.left();
        if (across && strut.height > native.top() && strut.height <= native.bottom())
            height = std::max(height, strut.height - native.top());
    }
    return height;
}

double statusBarThicknessFor(double panelHeight)
{
    return panelHeight >= 1 && panelHeight <= kHighestPanel ? panelHeight : kPlainThickness;
}

bool isBuiltIn(const QString &output)
{
    return output.startsWith("DSI-"_L1) || output.startsWith("eDP-"_L1) || output.startsWith("LVDS-"_L1);
}

QtDisplays::QtDisplays(XcbServer &server, const QString &system, QObject *parent)
    : Displays(parent)
    , m_server(server)
    , m_builtIn(builtInPanel(system))
{
    const auto screens = QGuiApplication::screens();
    for (auto *screen : screens)
        follow(screen);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen *screen) {
        follow(screen);
        changedSoon();
    });
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtDisplays::changedSoon);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtDisplays::changedSoon);
    connect(&m_server, &XcbServer::rootPropertyChanged, this, [this](xcb_atom_t property) {
        if (property == m_server.atom(XcbAtom::WorkArea))
            changedSoon();
    });
}

void QtDisplays::follow(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &QtDisplays::changedSoon);
    connect(screen, &QScreen::availableGeometryChanged, this, &QtDisplays::changedSoon);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &QtDisplays::changedSoon);
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, &QtDisplays::changedSoon);
}

void QtDisplays::changedSoon()
{
    if (m_pending)
        return;
    m_pending = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pending = false;
            Q_EMIT changed();
        },
        Qt::QueuedConnection);
}

QList<Display> QtDisplays::all() const
{
    auto screens = QGuiApplication::screens();
    screens.removeIf([](const QScreen *screen) { return !isReal(screen); });
    // The one work area that X11 has spans all displays, so with several of them the panels' own struts are read.
    const auto struts = screens.size() > 1 ? topStruts() : QList<TopStrut>();
    QList<Display> displays;
    for (const auto *screen : std::as_const(screens)) {
        Display display;
        display.name = screen->name();
        display.frame = screen->geometry();
        const double panel = screens.size() > 1 ? topPanelHeight(struts, nativeGeometry(screen)) / screen->devicePixelRatio()
                                                : screen->availableGeometry().top() - screen->geometry().top();
        display.statusBarThickness = statusBarThicknessFor(panel);
        display.main = screen == QGuiApplication::primaryScreen();
        if (const QSizeF housing = m_builtIn && isBuiltIn(display.name) ? housingOn(*m_builtIn, display.frame.size()) : QSizeF();
            !housing.isEmpty()) {
            const double side = (display.frame.width() - housing.width()) / 2;
            display.safeAreaTop = housing.height();
            display.auxiliaryTopLeft = QRectF(display.frame.topLeft(), QSizeF(side, housing.height()));
            display.auxiliaryTopRight = display.auxiliaryTopLeft->translated(side + housing.width(), 0);
        }
        displays.append(display);
    }
    return displays;
}

QList<TopStrut> QtDisplays::topStruts() const
{
    QList<TopStrut> struts;
    const auto property = m_server.atom(XcbAtom::StrutPartial);
    for (const auto window : m_server.values(m_server.root(), m_server.atom(XcbAtom::ClientList))) {
        const auto values = m_server.values(window, property);
        if (values.size() > kStrutTopEnd && values[kStrutTop] > 0)
            struts.append({int(values[kStrutTop]), int(values[kStrutTopStart]), int(values[kStrutTopEnd])});
    }
    return struts;
}

} // namespace velto
