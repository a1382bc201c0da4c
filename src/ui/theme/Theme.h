#pragma once

#include "ThemePalette.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The colours of every screen. Each one is an adaptive colour resolved for the current
/// appearance when read, so switching the appearance recolours everything at once.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The dark appearance is drawn (the light one otherwise).
    Q_PROPERTY(bool dark READ dark WRITE setDark NOTIFY appearanceChanged)
    /// Functions of the palette (neutral fill, tints by name), re-read on appearance changes.
    Q_PROPERTY(quill::ThemePalette* palette READ palette NOTIFY appearanceChanged)
    /// Window background; first stop of the gradient.
    Q_PROPERTY(QColor background READ background NOTIFY appearanceChanged)
    /// Second stop of the background gradient.
    Q_PROPERTY(QColor gradientMiddle READ gradientMiddle NOTIFY appearanceChanged)
    /// Last stop of the background gradient.
    Q_PROPERTY(QColor gradientEnd READ gradientEnd NOTIFY appearanceChanged)
    /// Sidebar background.
    Q_PROPERTY(QColor sidebarBackground READ sidebarBackground NOTIFY appearanceChanged)
    /// Card fill.
    Q_PROPERTY(QColor panel READ panel NOTIFY appearanceChanged)
    /// Emphasised card fill.
    Q_PROPERTY(QColor panelStrong READ panelStrong NOTIFY appearanceChanged)
    /// Primary accent and focusing.
    Q_PROPERTY(QColor mint READ mint NOTIFY appearanceChanged)
    /// Ring gradient.
    Q_PROPERTY(QColor mintBright READ mintBright NOTIFY appearanceChanged)
    /// Mind-wandering and destructive actions.
    Q_PROPERTY(QColor coral READ coral NOTIFY appearanceChanged)
    /// Fatigue, paused, streaks.
    Q_PROPERTY(QColor amber READ amber NOTIFY appearanceChanged)
    /// Micro-breaks and tasks.
    Q_PROPERTY(QColor blue READ blue NOTIFY appearanceChanged)
    /// Main text.
    Q_PROPERTY(QColor primaryText READ primaryText NOTIFY appearanceChanged)
    /// Secondary text.
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY appearanceChanged)
    /// Outlines and dividers.
    Q_PROPERTY(QColor hairline READ hairline NOTIFY appearanceChanged)
    /// Text on mint and coral fills.
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY appearanceChanged)
    /// The keyboard focus ring around controls.
    Q_PROPERTY(QColor focusRing READ focusRing NOTIFY appearanceChanged)
    /// The opaque fill of floating messages (toasts, tooltips): the strong panel over the
    /// background, so text on it reads the same whatever lies underneath.
    Q_PROPERTY(QColor floatingFill READ floatingFill NOTIFY appearanceChanged)
    /// The colour of drop shadows under dialogs and panels.
    Q_PROPERTY(QColor shadow READ shadow NOTIFY appearanceChanged)
    /// The smallest text size worth drawing on this display, in logical pixels: 11 where a
    /// logical pixel is one device pixel or a little more (CJK strokes merge below that),
    /// 0 on high-density displays, which draw every size as designed. Screens pass their
    /// small sizes through Math.max(size, Theme.smallTextMinimum).
    Q_PROPERTY(int smallTextMinimum READ smallTextMinimum NOTIFY displayChanged)
    /// Multiplier of every animation's duration: 1 in the app, 0 where frames are checked
    /// one by one (tests, screenshots), which makes every change land at once.
    Q_PROPERTY(double motion READ motion CONSTANT)

public:
    explicit Theme(QObject* parent = nullptr);

    bool dark() const { return m_appearance == AppearanceMode::dark; }
    void setDark(bool dark);
    AppearanceMode appearance() const { return m_appearance; }
    ThemePalette* palette() const { return m_palette; }

    QColor background() const;
    QColor gradientMiddle() const;
    QColor gradientEnd() const;
    QColor sidebarBackground() const;
    QColor panel() const;
    QColor panelStrong() const;
    QColor mint() const;
    QColor mintBright() const;
    QColor coral() const;
    QColor amber() const;
    QColor blue() const;
    QColor primaryText() const;
    QColor secondaryText() const;
    QColor hairline() const;
    QColor onAccent() const;
    QColor focusRing() const;
    QColor floatingFill() const;
    QColor shadow() const;

    int smallTextMinimum() const { return m_smallTextMinimum; }
    /// The floor for a display of this device-pixel ratio.
    static int smallTextMinimumFor(double devicePixelRatio);

    double motion() const { return m_motion; }
    /// The motion of themes created from now on.
    static void setDefaultMotion(double motion);

    /// `color` seen through `opacity` (0…1): its own opacity multiplied, so a translucent
    /// palette colour stays as faint as it was meant to be.
    Q_INVOKABLE static QColor alpha(const QColor& color, double opacity);
    /// `top` painted over `bottom` (source-over); opaque when `bottom` is.
    Q_INVOKABLE static QColor over(const QColor& top, const QColor& bottom);
    /// The contrast ratio of two opaque colours (1…21), as legibility guidelines define it.
    static double contrast(const QColor& a, const QColor& b);

Q_SIGNALS:
    void appearanceChanged();
    void displayChanged();

private:
    AppearanceMode m_appearance = AppearanceMode::dark;
    ThemePalette* m_palette;
    double m_motion;
    int m_smallTextMinimum = 0;

    void followScreen();
};

} // namespace quill
