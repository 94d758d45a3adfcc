#pragma once

#include <QObject>
#include <QQuickView>
#include <memory>

namespace velto {

/// Each primitive in each of its states: loads without a warning, and does with pointer, keys and screen reader what it says.
class PrimitivesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void loadsInEveryState_data();
    void loadsInEveryState();
    void controlsSpeakAndObeyKeys_data();
    void controlsSpeakAndObeyKeys();
    void aSlowPressCounts();
    void aPressOnAPillIsNotOneOnItsRow();
    void disabledControlsDoNothing();
    void helpAppearsInsideTheWindow();
    void bannerSaysTheState_data();
    void bannerSaysTheState();
    void dotMovesOnlyWhileSomeoneCanSeeIt();

private:
    /// Shows the QML in a window of 400 by 300 and returns its root.
    QQuickItem *show(const QString &qml, const QVariantMap &properties = {});

    std::unique_ptr<QQuickView> m_view;
};

} // namespace velto
