#pragma once

#include "ViewWindow.h"
#include "World.h"

#include "Core/UI.h"

namespace velto {

/// A tab with its real store, in a window of its own, as the user sees and uses it. It is the morning of Saturday, 21 November
/// 2026.
class ViewPage : public ViewWindow {
    Q_OBJECT

protected Q_SLOTS:
    void init();

protected:
    /// A new world with these files, and an empty window.
    void begin(QHash<QString, QByteArray> files = {});
    /// Shows the tab of `source`. With `still`, animations end at once.
    void show(VeltoSource &source, int height, bool still = false);
    void close() override;

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
};

} // namespace velto
