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

    double motion() const { return m_motion; }
    /// The motion of themes created from now on.
    static void setDefaultMotion(double motion);

    /// `color` with its opacity replaced by `opacity` (0…1).
    Q_INVOKABLE static QColor alpha(const QColor& color, double opacity);

Q_SIGNALS:
    void appearanceChanged();

private:
    AppearanceMode m_appearance = AppearanceMode::dark;
    ThemePalette* m_palette;
    double m_motion;
};

} // namespace quill
