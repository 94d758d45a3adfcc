#pragma once

#include <QQmlEngine>
#include <QSize>
#include <QString>
#include <QUrl>
#include <QVariant>
#include <optional>

namespace velto {

/// Draws views into PNG files, without anything on a screen: the toolkit's offscreen platform has to be running. UI thread only.
class Renderer {
public:
    Renderer();

    /// Draws the view of that QML file, `size` in points, over a background that is `dark` grey or dusk blue. Takes 0.6 seconds,
    /// in which the event loop runs: so long a layout may settle and a picture load. Returns a sentence for the user if the file
    /// can't be written.
    std::optional<QString> render(const QUrl &view, const QVariantMap &properties, QSize size, const QString &path, bool dark);

private:
    QQmlEngine m_engine; ///< one for all views, which share most of what they are made of
};

} // namespace velto
