#pragma once

#include "Platform/Displays.h"
#include "Platform/Linux/DisplayPanels.h"
#include "Platform/Linux/X11/XcbServer.h"

class QScreen;

namespace velto {

/// The room that a panel keeps for itself at the top of the desktop, in the X server's pixels (_NET_WM_STRUT_PARTIAL).
struct TopStrut {
    int height = 0; ///< from the top edge of the whole desktop
    int left = 0;
    int right = 0; ///< the last column, inclusive
};

/// The height of the panel at the top of the display `native`, in the X server's pixels; 0 without one.
int topPanelHeight(const QList<TopStrut> &struts, const QRect &native);
/// The status bar's thickness for a panel of that height, in device-independent pixels. Something too high to be a panel counts
/// as none.
double statusBarThicknessFor(double panelHeight);

/// Whether an output of that name is part of the device, as the kernel's connectors are called.
bool isBuiltIn(const QString &output);

/// The toolkit's screens, with the camera housing of the built-in one. A change is reported in a later turn of the event loop,
/// once for all that changed together.
class QtDisplays final : public Displays {
    Q_OBJECT
public:
    /// `system` is the kernel's folder about the machine (/sys).
    explicit QtDisplays(XcbServer &server, const QString &system = QStringLiteral("/sys"), QObject *parent = nullptr);

    QList<Display> all() const override;

private:
    void follow(QScreen *screen);
    void changedSoon();
    QList<TopStrut> topStruts() const;

    XcbServer &m_server;
    std::optional<DisplayPanel> m_builtIn;
    bool m_pending = false;
};

} // namespace velto
