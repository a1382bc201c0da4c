#include "Theme.h"

#include "ThemeColors.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace quill {

namespace {
double g_defaultMotion = 1.0;
} // namespace

void Theme::setDefaultMotion(double motion) {
    g_defaultMotion = std::max(0.0, motion);
}

Theme::Theme(QObject* parent)
    : QObject(parent), m_palette(new ThemePalette(this)), m_motion(g_defaultMotion) {
    m_palette->setAppearance(m_appearance);
    // The desktop's scale (QT_SCALE_FACTOR, Xft.dpi, per-screen factors) reaches Qt as the
    // screen's device-pixel ratio; follow it, also when the window moves or it changes.
    followScreen();
    if (auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        connect(app, &QGuiApplication::primaryScreenChanged, this, &Theme::followScreen);
    if (QScreen* screen = QGuiApplication::primaryScreen())
        connect(screen, &QScreen::logicalDotsPerInchChanged, this, &Theme::followScreen);
}

int Theme::smallTextMinimumFor(double devicePixelRatio) {
    return devicePixelRatio < 1.75 ? 11 : 0;
}

void Theme::followScreen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const int next = smallTextMinimumFor(screen ? screen->devicePixelRatio() : 1.0);
    if (next == m_smallTextMinimum)
        return;
    m_smallTextMinimum = next;
    Q_EMIT displayChanged();
}

void Theme::setDark(bool dark) {
    const AppearanceMode next = dark ? AppearanceMode::dark : AppearanceMode::light;
    if (next == m_appearance)
        return;
    m_appearance = next;
    m_palette->setAppearance(next);
    Q_EMIT appearanceChanged();
}

QColor Theme::background() const {
    return ThemeColors::background.resolve(m_appearance);
}
QColor Theme::gradientMiddle() const {
    return ThemeColors::gradientMiddle.resolve(m_appearance);
}
QColor Theme::gradientEnd() const {
    return ThemeColors::gradientEnd.resolve(m_appearance);
}
QColor Theme::sidebarBackground() const {
    return ThemeColors::sidebarBackground.resolve(m_appearance);
}
QColor Theme::panel() const {
    return ThemeColors::panel.resolve(m_appearance);
}
QColor Theme::panelStrong() const {
    return ThemeColors::panelStrong.resolve(m_appearance);
}
QColor Theme::mint() const {
    return ThemeColors::mint.resolve(m_appearance);
}
QColor Theme::mintBright() const {
    return ThemeColors::mintBright.resolve(m_appearance);
}
QColor Theme::coral() const {
    return ThemeColors::coral.resolve(m_appearance);
}
QColor Theme::amber() const {
    return ThemeColors::amber.resolve(m_appearance);
}
QColor Theme::blue() const {
    return ThemeColors::blue.resolve(m_appearance);
}
QColor Theme::primaryText() const {
    return ThemeColors::primaryText.resolve(m_appearance);
}
QColor Theme::secondaryText() const {
    return ThemeColors::secondaryText.resolve(m_appearance);
}
QColor Theme::hairline() const {
    return ThemeColors::hairline.resolve(m_appearance);
}
QColor Theme::onAccent() const {
    return ThemeColors::onAccent.resolve(m_appearance);
}

QColor Theme::focusRing() const {
    return ThemeColors::focusRing.resolve(m_appearance);
}
QColor Theme::floatingFill() const {
    return over(panelStrong(), background());
}
QColor Theme::shadow() const {
    // Dark windows need a deeper shadow to separate from an already dark backdrop.
    return QColor::fromRgbF(0, 0, 0, dark() ? 0.5f : 0.22f);
}

QColor Theme::alpha(const QColor& color, double opacity) {
    QColor c = color;
    c.setAlphaF(float(color.alphaF() * std::clamp(opacity, 0.0, 1.0)));
    return c;
}

QColor Theme::over(const QColor& top, const QColor& bottom) {
    const double ta = top.alphaF();
    const double ba = bottom.alphaF();
    const double a = ta + ba * (1.0 - ta);
    if (a <= 0.0)
        return QColor::fromRgbF(0, 0, 0, 0);
    auto mix = [&](double t, double b) { return float((t * ta + b * ba * (1.0 - ta)) / a); };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()), float(a));
}

double Theme::contrast(const QColor& a, const QColor& b) {
    auto luminance = [](const QColor& c) {
        auto channel = [](double v) {
            return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) +
               0.0722 * channel(c.blueF());
    };
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace quill
