#pragma once

#include "Core/Tab.h"
#include "Hub/Hub.h"
#include "Platform/Accessibility.h"
#include "Platform/VideoPlayer.h"
#include "Shell/CollapsedStrip.h"
#include "Shell/PanelContents.h"
#include "Shell/PanelOutline.h"
#include "Shell/PeekLine.h"
#include "Shell/UI.h"
#include "Tabs/Agents/AgentsSource.h"
#include "Tabs/Connect/ConnectSource.h"
#include "Tabs/Home/HomeSource.h"
#include "Tabs/Quillbox/QuillboxSource.h"
#include "Tabs/Todos/TodosSource.h"

#include <QAbstractItemModel>
#include <QtQml/qqml.h>

// Each declaration gives QML the type of a store, for property types, the compiler and the linter. None can be made there.

namespace velto::tab_type {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(velto)
QML_NAMED_ELEMENT(Velto)
} // namespace velto::tab_type

struct PeekLineType {
    Q_GADGET
    QML_FOREIGN(velto::PeekLine)
    QML_NAMED_ELEMENT(PeekLine)
    QML_UNCREATABLE("Made in C++")
};

struct VeltoSourceType {
    Q_GADGET
    QML_FOREIGN(velto::VeltoSource)
    QML_NAMED_ELEMENT(VeltoSource)
    QML_UNCREATABLE("Made in C++")
};

// Qt 6.4 declares the base of all models only beside the controls.
struct ItemModelType {
    Q_GADGET
    QML_FOREIGN(QAbstractItemModel)
    QML_ANONYMOUS
};

struct HubType {
    Q_GADGET
    QML_FOREIGN(velto::Hub)
    QML_NAMED_ELEMENT(Hub)
    QML_UNCREATABLE("Made in C++")
};

struct UIType {
    Q_GADGET
    QML_FOREIGN(velto::UI)
    QML_NAMED_ELEMENT(UI)
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

struct QuillboxSourceType {
    Q_GADGET
    QML_FOREIGN(velto::QuillboxSource)
    QML_NAMED_ELEMENT(QuillboxSource)
    QML_UNCREATABLE("Made in C++")
};

struct AgentsSourceType {
    Q_GADGET
    QML_FOREIGN(velto::AgentsSource)
    QML_NAMED_ELEMENT(AgentsSource)
    QML_UNCREATABLE("Made in C++")
};

struct TodosSourceType {
    Q_GADGET
    QML_FOREIGN(velto::TodosSource)
    QML_NAMED_ELEMENT(TodosSource)
    QML_UNCREATABLE("Made in C++")
};

struct DraftFormType {
    Q_GADGET
    QML_FOREIGN(velto::DraftForm)
    QML_NAMED_ELEMENT(DraftFormStore) // the view is DraftForm
    QML_UNCREATABLE("Made in C++")
};

struct HomeSourceType {
    Q_GADGET
    QML_FOREIGN(velto::HomeSource)
    QML_NAMED_ELEMENT(HomeSource)
    QML_UNCREATABLE("Made in C++")
};

struct HomeSpotlightType {
    Q_GADGET
    QML_FOREIGN(velto::HomeSpotlight)
    QML_NAMED_ELEMENT(HomeSpotlight)
    QML_UNCREATABLE("Made in C++")
};

struct VideoPlayerType {
    Q_GADGET
    QML_FOREIGN(velto::VideoPlayer)
    QML_NAMED_ELEMENT(VideoPlayer)
    QML_UNCREATABLE("Made in C++")
};

struct ConnectSourceType {
    Q_GADGET
    QML_FOREIGN(velto::ConnectSource)
    QML_NAMED_ELEMENT(ConnectSource)
    QML_UNCREATABLE("Made in C++")
};

struct CalendarFormType {
    Q_GADGET
    QML_FOREIGN(velto::CalendarForm)
    QML_NAMED_ELEMENT(CalendarForm)
    QML_UNCREATABLE("Made in C++")
};

struct McpFormType {
    Q_GADGET
    QML_FOREIGN(velto::McpForm)
    QML_NAMED_ELEMENT(McpForm)
    QML_UNCREATABLE("Made in C++")
};

struct TokenSettingsType {
    Q_GADGET
    QML_FOREIGN(velto::TokenSettings)
    QML_NAMED_ELEMENT(TokenSettings)
    QML_UNCREATABLE("Made in C++")
};
