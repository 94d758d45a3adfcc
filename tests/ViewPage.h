#pragma once

#include "ViewWindow.h"
#include "World.h"

#include "Core/UI.h"

namespace velto {

/// A tab on its real store, in a window of its own, as a person sees and works it. It is the morning of Saturday, 21 November
/// 2026.
class ViewPage : public ViewWindow {
    Q_OBJECT

protected Q_SLOTS:
    void init();

protected:
    /// A fresh world with these files, and a window in which nothing stands yet.
    void begin(QHash<QString, QByteArray> files = {});
    /// Shows what `source` has to show. Where `still`, what moves is where it goes at once.
    void show(VeltoSource &source, int height, bool still = false);
    void close() override;

    std::unique_ptr<World> m_world;
    std::unique_ptr<UI> m_ui;
};

} // namespace velto
