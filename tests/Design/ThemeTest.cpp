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
    void springFollowsTheCurve_data()
    {
        columns<double, double>({"seconds", "travel"});

        // 1 - (1 + wt) e^(-wt) at wt = 0, 1, pi/2, pi and 2 pi, with w = 2 pi / 0.38 s; over what it reaches after 0.55 s.
        QTest::newRow("start") << 0.0 << 0.0;
        QTest::newRow("wt = 1") << 0.0604789 << 0.26454;
        QTest::newRow("a quarter") << 0.095 << 0.46611;
        QTest::newRow("half") << 0.19 << 0.82197;
        QTest::newRow("one response") << 0.38 << 0.98752;
        QTest::newRow("end") << 0.55 << 1.0;
    }

    void springFollowsTheCurve()
    {
        QFETCH(const double, seconds);
        QFETCH(const double, travel);
        const double reached = Theme::spring().valueForProgress(seconds * 1000 / Theme::kSpringDuration);
        QVERIFY2(qAbs(reached - travel) < 0.0005, qPrintable(QString::number(reached)));
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
