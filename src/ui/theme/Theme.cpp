#include "Theme.h"

#include "ThemeColors.h"

#include <algorithm>

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

QColor Theme::alpha(const QColor& color, double opacity) {
    QColor c = color;
    c.setAlphaF(float(std::clamp(opacity, 0.0, 1.0)));
    return c;
}

} // namespace quill
