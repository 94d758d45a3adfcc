#pragma once

#include "Platform/Linux/X11/XcbServer.h"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QSize>
#include <QTimer>
#include <memory>

class QRasterWindow;

namespace velto {

/// The program's icon in a tray of the older kind, which takes programs' windows in.
/// https://specifications.freedesktop.org/systemtray-spec/ UI thread only.
class XembedIcon final : public QObject, private QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// Asks `tray`, the owner of the tray's selection, to take it in.
    XembedIcon(XcbServer &server, xcb_window_t tray, const QString &description, QObject *parent = nullptr);
    ~XembedIcon() override;

    /// Whether that tray has it, or was asked to take it in.
    bool isIn(xcb_window_t tray) const { return tray == m_tray && !m_gone; }

Q_SIGNALS:
    void pressed();
    void menuWanted();

private:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
    void create();
    void dock();
    void paint();
    /// What the tray shows behind a window that has no transparency of its own.
    QImage behind() const;
    void showTip();

    XcbServer &m_server;
    xcb_window_t m_tray;
    QString m_description;
    xcb_visualid_t m_visual = 0; ///< the tray's own, with transparency; 0 without
    xcb_colormap_t m_colours = XCB_NONE;
    xcb_window_t m_window = kNoWindow;
    bool m_gone = false; ///< the tray has taken the window with it
    xcb_gcontext_t m_context = XCB_NONE;
    QSize m_size;
    QTimer m_rests; ///< the pointer on the icon
    std::unique_ptr<QRasterWindow> m_tip;
};

} // namespace velto
