import QtQuick
import Velto.Design

/// The animation of every change of state: `Behavior on x { Spring {} }`.
NumberAnimation {
    duration: Theme.springDuration
    easing: Theme.spring
}
