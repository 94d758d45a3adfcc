#include "Design/Theme.h"

#include "Design/Symbols.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
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

/// The spring as an easing curve. A spring never quite arrives, but an animation must: the missing thousandth is spread over
/// the whole way.
qreal springCurve(qreal progress)
{
    constexpr qreal kSeconds = Theme::kSpringDuration / 1000.0;
    static const qreal whole = springTravel(kSeconds);
    return springTravel(progress * kSeconds) / whole;
}

/// `color` blended over `ground`.
QColor over(const QColor &color, const QColor &ground)
{
    const float alpha = color.alphaF();
    const auto mix = [&](float top, float below) { return top * alpha + below * (1 - alpha); };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

/// https://www.w3.org/TR/WCAG21/#dfn-relative-luminance
double luminance(const QColor &color)
{
    const auto linear = [](double channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// From `color` towards white, and towards opaque.
QColor lighter(const QColor &color, float way)
{
    const auto up = [&](float channel) { return channel + (1 - channel) * way; };
    return QColor::fromRgbF(up(color.redF()), up(color.greenF()), up(color.blueF()), up(color.alphaF()));
}

/// By how much the first line of `text` is larger than a line of the font's own letters.
qreal beyond(const QString &text, const QFont &font, qreal (QTextLine::*ofLine)() const, qreal (QFontMetricsF::*ofFont)() const)
{
    constexpr qsizetype kMostShown = 500;
    const QString shown = text.left(kMostShown).section(u'\n', 0, 0);
    if (!Theme::mayBeForeign(shown))
        return 0;
    QTextLayout layout(shown, font);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    return line.isValid() ? std::max(0.0, (line.*ofLine)() - (QFontMetricsF(font).*ofFont)()) : 0;
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

void Theme::setHighContrast(bool high)
{
    if (m_highContrast == high)
        return;
    m_highContrast = high;
    Q_EMIT contrastChanged();
}

void Theme::setReducedMotion(bool reduced)
{
    if (m_reducedMotion == reduced)
        return;
    m_reducedMotion = reduced;
    Q_EMIT motionChanged();
}

void Theme::setTextScale(double scale)
{
    if (m_textScale == scale)
        return;
    m_textScale = scale;
    Q_EMIT textScaleChanged();
}

void Theme::setPointerRests(bool rests)
{
    if (m_pointerRests == rests)
        return;
    m_pointerRests = rests;
    Q_EMIT pointerRestsChanged();
}

void Theme::setKeyboardElsewhere(bool elsewhere)
{
    if (m_keyboardElsewhere == elsewhere)
        return;
    m_keyboardElsewhere = elsewhere;
    Q_EMIT keyboardElsewhereChanged();
}

void Theme::setSnapshotRendering(bool snapshot)
{
    if (m_snapshotRendering == snapshot)
        return;
    m_snapshotRendering = snapshot;
    Q_EMIT snapshotRenderingChanged();
}

QColor Theme::panelColor(qreal place)
{
    const qreal way = std::clamp(1 - std::abs(2 * place - 1), 0.0, 1.0);
    const qreal light = 0.3 * way * way * (3 - 2 * way);
    return QColor::fromRgbF(float(kIce.redF() * light), float(kIce.greenF() * light), float(kIce.blueF() * light));
}

double Theme::contrast(const QColor &text, const QColor &ground)
{
    const double one = luminance(over(text, ground)) + 0.05;
    const double other = luminance(ground) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QColor Theme::lightestGround(const QColor &tint, qreal fill)
{
    const QColor row = over(QColor::fromRgbF(1, 1, 1, float(kLightestRow)), panelColor(0.5));
    return over(QColor::fromRgbF(tint.redF(), tint.greenF(), tint.blueF(), float(tint.alphaF() * fill)), row);
}

QColor Theme::ink(const QColor &color, qreal fill)
{
    constexpr int kSteps = 50;
    const QColor ground = lightestGround(color, fill);
    int step = 0;
    while (step < kSteps && contrast(lighter(color, float(step) / kSteps), ground) < kLegible)
        ++step;
    return lighter(color, float(step) / kSteps);
}

qreal Theme::capitalsDrop(qreal size, qreal height) const
{
    // Measured at a large size, so that nothing is rounded: the scene graph places a line by the font's own ascent, whatever
    // the layout's is. The face is one that is loaded anyway; another size of it needs no search among the system's fonts.
    static const qreal middle = [&] {
        QFont font(family());
        font.setPixelSize(qRound(size));
        font.setWeight(QFont::Medium);
        QRawFont raw = QRawFont::fromFont(font);
        raw.setPixelSize(1000);
        return (raw.ascent() - raw.capHeight() / 2) / 1000;
    }();
    // A line's position is truncated to device pixels; half a device pixel more rounds it instead. It is a little less than half,
    // since with a whole half many lines come out one pixel lower with Qt 6.8.
    constexpr qreal kNearlyHalf = 0.48;
    return height / 2 - middle * size + kNearlyHalf / std::max(1.0, qGuiApp->devicePixelRatio());
}

bool Theme::mayBeForeign(const QString &text)
{
    return std::ranges::any_of(text, [](QChar c) { return c >= QChar(0x0590) && (c < QChar(0x2000) || c > QChar(0x206F)); });
}

qreal Theme::foreignRise(const QString &text, const QFont &font)
{
    return beyond(text, font, &QTextLine::ascent, &QFontMetricsF::ascent);
}

qreal Theme::foreignDrop(const QString &text, const QFont &font)
{
    return beyond(text, font, &QTextLine::descent, &QFontMetricsF::descent);
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
