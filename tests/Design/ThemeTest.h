#pragma once

#include <QObject>

namespace velto {

/// The numbers that views stand on.
class ThemeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void springFollowsTheCurve_data();
    void springFollowsTheCurve();
    void animationsUseTheSpring();
    void nothingMovesWhenMotionIsReduced();
};

} // namespace velto
