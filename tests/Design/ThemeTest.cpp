#include "RunTests.h"

#include "Design/Theme.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <memory>

using namespace Qt::StringLiterals;

namespace velto {

/// The numbers that views stand on.
class ThemeTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void springFollowsTheCurve()
    {
        // 1 - (1 + wt) e^(-wt) with w = 2 pi / 0.38 s, over what it reaches after 0.55 s.
        for (const auto &[seconds, travel] : {std::pair(0.0, 0.0), std::pair(0.095, 0.46611), std::pair(0.19, 0.82197),
                                              std::pair(0.38, 0.98752), std::pair(0.55, 1.0)}) {
            const double reached = Theme::spring().valueForProgress(seconds * 1000 / Theme::kSpringDuration);
            QVERIFY2(qAbs(reached - travel) < 0.0005, qPrintable(u"%1 at %2 s"_s.arg(reached).arg(seconds)));
        }
    }

    void animationsUseTheSpring()
    {
        QQmlEngine engine;
        engine.addImportPath(u"qrc:/qt/qml"_s);
        QQmlComponent component(&engine);
        component.setData("import Velto.Design\nSpring {}", QUrl(u"qrc:/test.qml"_s));
        const std::unique_ptr<QObject> spring(component.create());
        QVERIFY2(spring, qPrintable(component.errorString()));
        QCOMPARE(spring->property("duration").toInt(), Theme::kSpringDuration);
        const auto easing = spring->property("easing").value<QEasingCurve>();
        QCOMPARE(easing.valueForProgress(0.2), Theme::spring().valueForProgress(0.2));
    }

    void nothingMovesWhenMotionIsReduced()
    {
        Theme theme;
        QVERIFY(theme.fadeDuration() > 0);
        theme.setReducedMotion(true);
        QCOMPARE(theme.springDuration(), 0);
        QCOMPARE(theme.fadeDuration(), 0);
        QCOMPARE(theme.flashInDuration(), 0);
        QCOMPARE(theme.flashOutDuration(), 0);
    }
};

const Registered<ThemeTest> registered;

} // namespace velto

#include "ThemeTest.moc"
