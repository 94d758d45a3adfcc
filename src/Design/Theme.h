#pragma once

#include <QColor>
#include <QEasingCurve>
#include <QObject>
#include <QString>
#include <QtQml/qqml.h>

class QQmlEngine;

namespace velto {

/// The look that all views share: colours, type sizes, radii, spacings and the one animation. Everything sits on black.
/// One instance for each QML engine; C++ reaches it with Theme::of().
/// Lives on the UI thread. Touches no font until a font family is read.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    // Tones
    Q_PROPERTY(QColor ice MEMBER kIce CONSTANT FINAL)
    Q_PROPERTY(QColor accent MEMBER kIce CONSTANT FINAL)
    Q_PROPERTY(QColor accentStrong MEMBER kAccentStrong CONSTANT FINAL)
    Q_PROPERTY(QColor amber MEMBER kAmber CONSTANT FINAL)
    Q_PROPERTY(QColor mint MEMBER kMint CONSTANT FINAL)
    Q_PROPERTY(QColor coral MEMBER kCoral CONSTANT FINAL)
    // Text
    Q_PROPERTY(QColor glassPrimary MEMBER kGlassPrimary CONSTANT FINAL)
    Q_PROPERTY(QColor glassSecondary READ glassSecondary NOTIFY contrastChanged FINAL)
    Q_PROPERTY(QColor glassTertiary READ glassTertiary NOTIFY contrastChanged FINAL)
    // Plain signal colours, where a view asks for a colour and not for a tone
    Q_PROPERTY(QColor red MEMBER kRed CONSTANT FINAL)
    Q_PROPERTY(QColor orange MEMBER kOrange CONSTANT FINAL)
    Q_PROPERTY(QColor green MEMBER kGreen CONSTANT FINAL)
    Q_PROPERTY(QColor cyan MEMBER kCyan CONSTANT FINAL)
    // What lies over the panel
    Q_PROPERTY(QColor sheet MEMBER kSheet CONSTANT FINAL)
    Q_PROPERTY(QColor popover MEMBER kPopover CONSTANT FINAL)

    // Edges where the desktop asks for high contrast; else 0
    Q_PROPERTY(qreal edgeFloor READ edgeFloor NOTIFY contrastChanged FINAL)
    Q_PROPERTY(int cardEdge READ cardEdge NOTIFY contrastChanged FINAL)
    Q_PROPERTY(bool highContrast READ highContrast WRITE setHighContrast NOTIFY contrastChanged FINAL)

    // Type, in logical pixels
    Q_PROPERTY(QString family READ family CONSTANT FINAL)
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT FINAL)
    Q_PROPERTY(QString symbolFamily READ symbolFamily CONSTANT FINAL)
    Q_PROPERTY(int textTiny MEMBER kTextTiny CONSTANT FINAL)
    Q_PROPERTY(int textSmall MEMBER kTextSmall CONSTANT FINAL)
    Q_PROPERTY(int textBody MEMBER kTextBody CONSTANT FINAL)
    Q_PROPERTY(int textTitle MEMBER kTextTitle CONSTANT FINAL)
    Q_PROPERTY(int textLarge MEMBER kTextLarge CONSTANT FINAL)
    Q_PROPERTY(int textHeadline MEMBER kTextHeadline CONSTANT FINAL)

    // Shape, in logical pixels; it grows with the letters
    Q_PROPERTY(int radiusCard READ radiusCard NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int radiusRow READ radiusRow NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int radiusControl READ radiusControl NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int paddingCard READ paddingCard NOTIFY textScaleChanged FINAL)
    /// The height of a field, a segmented control and whatever shares a row with them.
    Q_PROPERTY(int controlHeight READ controlHeight NOTIFY textScaleChanged FINAL)
    /// The scale of letters and symbols, and with them of rows and controls: 1 to 2.
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int gap READ gap NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int gapTight READ gapTight NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(int gapSection READ gapSection NOTIFY textScaleChanged FINAL)

    // Motion: every duration is 0 while motion is reduced
    Q_PROPERTY(QEasingCurve spring READ spring CONSTANT FINAL)
    Q_PROPERTY(int springDuration READ springDuration NOTIFY motionChanged FINAL)
    Q_PROPERTY(int fadeDuration READ fadeDuration NOTIFY motionChanged FINAL)
    Q_PROPERTY(int flashInDuration READ flashInDuration NOTIFY motionChanged FINAL)
    Q_PROPERTY(int flashOutDuration READ flashOutDuration NOTIFY motionChanged FINAL)
    Q_PROPERTY(int helpDelay MEMBER kHelpDelay CONSTANT FINAL)
    Q_PROPERTY(bool reducedMotion READ reducedMotion WRITE setReducedMotion NOTIFY motionChanged FINAL)
    Q_PROPERTY(bool pointerRests READ pointerRests WRITE setPointerRests NOTIFY pointerRestsChanged FINAL)
    Q_PROPERTY(bool keyboardElsewhere READ keyboardElsewhere WRITE setKeyboardElsewhere NOTIFY keyboardElsewhereChanged FINAL)
    Q_PROPERTY(bool snapshotRendering READ snapshotRendering WRITE setSnapshotRendering NOTIFY snapshotRenderingChanged FINAL)

public:
    static constexpr QColor kIce{141, 220, 255};
    static constexpr QColor kAccentStrong{217, 245, 255};
    static constexpr QColor kAmber{232, 200, 122};
    static constexpr QColor kMint{116, 221, 180};
    static constexpr QColor kCoral{239, 125, 139};
    static constexpr QColor kGlassPrimary{255, 255, 255, 242};
    static constexpr QColor kGlassSecondary{255, 255, 255, 184}; // 0.72
    static constexpr QColor kGlassTertiary{255, 255, 255, 174}; // 0.68, see ink()
    static constexpr QColor kRed{255, 69, 58};
    static constexpr QColor kOrange{255, 159, 10};
    static constexpr QColor kGreen{48, 209, 88};
    static constexpr QColor kCyan{100, 210, 255};

    static constexpr QColor kSheet{27, 30, 34};
    static constexpr QColor kPopover{43, 45, 49};

    /// Where the panel is lightest, a row under the pointer, or a card, is lighter still by so much white; a tile comes to the
    /// same.
    static constexpr qreal kLightestRow = 0.1;
    static constexpr qreal kLegible = 4.5;
    static constexpr qreal kStrongEdge = 0.85;

    static constexpr int kTextTiny = 10;
    static constexpr int kTextSmall = 11;
    static constexpr int kTextBody = 12;
    static constexpr int kTextTitle = 13;
    static constexpr int kTextLarge = 15;
    static constexpr int kTextHeadline = 22;

    static constexpr int kRadiusCard = 16;
    static constexpr int kRadiusRow = 10;
    static constexpr int kRadiusControl = 8;
    static constexpr int kPaddingCard = 12;
    static constexpr int kControlHeight = 28;
    static constexpr int kGap = 8;
    static constexpr int kGapTight = 5;
    static constexpr int kGapSection = 14;

    static constexpr int kSpringDuration = 550; // ms; by then the spring is within a thousandth of its end
    static constexpr int kFadeDuration = 120; // ms
    static constexpr int kFlashInDuration = 150; // ms
    static constexpr int kFlashOutDuration = 600; // ms
    static constexpr int kHelpDelay = 600; // ms

    explicit Theme(QObject *parent = nullptr);

    /// How well `text`, which may be translucent, stands out from an opaque ground: 1 to 21.
    static double contrast(const QColor &text, const QColor &ground);
    /// The lightest that is under a text on a fill of `tint` at an opacity of `fill`.
    static QColor lightestGround(const QColor &tint = Qt::white, qreal fill = 0);

    /// The engine's theme. Null as long as nothing in the engine has imported the module: load the component, set the theme,
    /// then create the objects.
    static Theme *of(QQmlEngine *engine);

    /// Inter, or the desktop's own family where Inter isn't installed.
    QString family() const;
    QString fixedFamily() const;
    QString symbolFamily() const;

    /// A critically damped spring with a response of 0.38 s, over springDuration().
    static QEasingCurve spring();
    int springDuration() const { return moving(kSpringDuration); }
    int fadeDuration() const { return moving(kFadeDuration); }
    int flashInDuration() const { return moving(kFlashInDuration); }
    int flashOutDuration() const { return moving(kFlashOutDuration); }

    double textScale() const { return m_textScale; }
    void setTextScale(double scale);
    int radiusCard() const { return grown(kRadiusCard); }
    int radiusRow() const { return grown(kRadiusRow); }
    int radiusControl() const { return grown(kRadiusControl); }
    int paddingCard() const { return grown(kPaddingCard); }
    int controlHeight() const { return grown(kControlHeight); }
    int gap() const { return grown(kGap); }
    int gapTight() const { return grown(kGapTight); }
    int gapSection() const { return grown(kGapSection); }
    /// Whether the desktop asks for strong edges: quiet texts are white then, and what is a fill alone has an edge.
    bool highContrast() const { return m_highContrast; }
    void setHighContrast(bool high);
    QColor glassSecondary() const { return m_highContrast ? QColor(Qt::white) : kGlassSecondary; }
    QColor glassTertiary() const { return m_highContrast ? QColor(Qt::white) : kGlassTertiary; }
    /// The least opacity of an edge.
    qreal edgeFloor() const { return m_highContrast ? kStrongEdge : 0; }
    /// The width of an edge around cards and rows, in logical pixels.
    int cardEdge() const { return m_highContrast ? 1 : 0; }
    /// Whether the desktop asks for less motion.
    bool reducedMotion() const { return m_reducedMotion; }
    void setReducedMotion(bool reduced);
    /// Whether something appeared under a pointer that hasn't moved since: what is under it doesn't light up or show help.
    bool pointerRests() const { return m_pointerRests; }
    void setPointerRests(bool rests);
    /// Whether the desktop keeps the keyboard from the window: no caret and no ring promises that what is typed arrives.
    bool keyboardElsewhere() const { return m_keyboardElsewhere; }
    void setKeyboardElsewhere(bool elsewhere);
    /// Whether the views are drawn into a picture: plain fills stand in for glass, and nothing moves.
    bool snapshotRendering() const { return m_snapshotRendering; }
    void setSnapshotRendering(bool snapshot);

    /// The ground of the open panel at a place from 0, its upper edge, to 1: black, ice at an opacity of 0.3 in the middle, black
    /// again, eased in between so that no line shows where the ways meet.
    Q_INVOKABLE static QColor panelColor(qreal place);
    /// How much lower a line of text of this size, in a box of this height, has to be for its capitals to be in the middle
    /// of what it is centred in, in logical pixels.
    Q_INVOKABLE qreal capitalsDrop(qreal size, qreal height) const;
    /// Whether a font for Latin, Greek and Cyrillic may lack something of this text.
    Q_INVOKABLE static bool mayBeForeign(const QString &text);
    /// How much more a line of this font has above its baseline, and below it, where letters of `text` come from another font; in
    /// logical pixels.
    Q_INVOKABLE static qreal foreignRise(const QString &text, const QFont &font);
    Q_INVOKABLE static qreal foreignDrop(const QString &text, const QFont &font);
    /// The text that draws a symbol in symbolFamily. Empty for an unknown name.
    Q_INVOKABLE QString glyph(const QString &name) const;
    /// The colour of a text: `color`, lightened as far as it takes to be read at 4.5 to 1 (WCAG 2, AA) on the lightest ground
    /// that a text can be scrolled to, tinted with `fill` of the colour itself. Symbols and fills keep their colours.
    Q_INVOKABLE static QColor ink(const QColor &color, qreal fill = 0);
    /// A colour at the given opacity, multiplied by its own.
    Q_INVOKABLE QColor at(const QColor &color, qreal opacity) const;

Q_SIGNALS:
    void contrastChanged();
    void motionChanged();
    void textScaleChanged();
    void pointerRestsChanged();
    void keyboardElsewhereChanged();
    void snapshotRenderingChanged();

private:
    int moving(int duration) const { return m_reducedMotion ? 0 : duration; }
    int grown(int length) const { return qRound(length * m_textScale); }

    bool m_highContrast = false;
    bool m_reducedMotion = false;
    double m_textScale = 1;
    bool m_pointerRests = false;
    bool m_keyboardElsewhere = false;
    bool m_snapshotRendering = false;
};

} // namespace velto
