#include "Design/Theme.h"

#include "Design/Symbols.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QQmlEngine>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace velto {

namespace {

constexpr qreal kResponse = 0.38; // s

/// How far a critically damped spring has come after the given seconds, on its way from 0 to 1.
qreal springTravel(qreal seconds)
{
    const qreal angle = 2 * std::numbers::pi / kResponse * seconds;
    return 1 - (1 + angle) * std::exp(-angle);
}

/// The spring as an easing curve. A spring never quite arrives, an animation has to: the rest, a thousandth, is spread over
/// the whole way.
qreal springCurve(qreal progress)
{
    constexpr qreal kSeconds = Theme::kSpringDuration / 1000.0;
    static const qreal whole = springTravel(kSeconds);
    return springTravel(progress * kSeconds) / whole;
}

} // namespace

Theme::Theme(QObject *parent)
    : QObject(parent)
{
}

Theme *Theme::of(QQmlEngine *engine)
{
    const int type = qmlTypeId("Velto.Design", 1, 0, "Theme");
    return engine && type >= 0 ? engine->singletonInstance<Theme *>(type) : nullptr;
}

QString Theme::family() const
{
    static const QString family = QFontDatabase::hasFamily(u"Inter"_s) ? u"Inter"_s : QGuiApplication::font().family();
    return family;
}

QString Theme::fixedFamily() const
{
    static const QString family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    return family;
}

QString Theme::symbolFamily() const
{
    return velto::symbolFamily();
}

QEasingCurve Theme::spring()
{
    QEasingCurve curve;
    curve.setCustomType(springCurve);
    return curve;
}

void Theme::setReducedMotion(bool reduced)
{
    if (m_reducedMotion == reduced)
        return;
    m_reducedMotion = reduced;
    Q_EMIT motionChanged();
}

void Theme::setSnapshotRendering(bool snapshot)
{
    if (m_snapshotRendering == snapshot)
        return;
    m_snapshotRendering = snapshot;
    Q_EMIT snapshotRenderingChanged();
}

QString Theme::glyph(const QString &name) const
{
    return symbolGlyph(name);
}

QColor Theme::at(const QColor &color, qreal opacity) const
{
    QColor faded = color;
    faded.setAlphaF(float(color.alphaF() * opacity));
    return faded;
}

} // namespace velto
