#pragma once

#include <QRect>
#include <QSize>
#include <QString>
#include <optional>

namespace velto {

/// The display that is built into this device, as its makers drew it.
struct DisplayPanel {
    QSize size; ///< in the panel's own pixels, as the device is held upright
    QRect housing; ///< what the camera takes of it at the middle of its upper edge, in those pixels
};

/// Looked up by the compatible names of the device tree under `system` ("/sys"), in the data of gmobile
/// (https://gitlab.gnome.org/World/Phosh/gmobile, LGPL; Debian 13's package libgmobile0), which is loaded only on a machine with
/// a device tree. Nothing if there is neither, if it doesn't know the device, and if no camera is at that place. gmobile's own
/// GMOBILE_DT_COMPATIBLES stands in for the names.
std::optional<DisplayPanel> builtInPanel(const QString &system, const char *library = "libgmobile.so.0");

/// What the housing takes of a screen with that geometry, in device-independent pixels, centred in it. Empty if the panel is
/// turned on its side.
QSizeF housingOn(const DisplayPanel &panel, QSizeF screen);

} // namespace velto
