#pragma once

#include "Platform/Accessibility.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"

#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

struct PeekLineType {
    Q_GADGET
    QML_FOREIGN(velto::PeekLine)
    QML_NAMED_ELEMENT(PeekLine)
    QML_UNCREATABLE("Made in C++")
};

struct CollapsedStripType {
    Q_GADGET
    QML_FOREIGN(velto::CollapsedStrip)
    QML_NAMED_ELEMENT(CollapsedStrip)
    QML_UNCREATABLE("Made in C++")
};

struct PanelOutlineType {
    Q_GADGET
    QML_FOREIGN(velto::PanelOutline)
    QML_NAMED_ELEMENT(PanelOutline)
    QML_UNCREATABLE("Made in C++")
};

struct PanelContentsType {
    Q_GADGET
    QML_FOREIGN(velto::PanelContents)
    QML_NAMED_ELEMENT(PanelContents)
    QML_UNCREATABLE("Made in C++")
};

struct AccessibilityType {
    Q_GADGET
    QML_FOREIGN(velto::Accessibility)
    QML_NAMED_ELEMENT(DesktopAccessibility)
    QML_UNCREATABLE("Made in C++")
};
