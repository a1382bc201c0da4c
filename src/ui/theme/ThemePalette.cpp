#include "ThemePalette.h"

#include "ThemeColors.h"

namespace quill {

QColor ThemePalette::neutralFill(double opacity) const {
    return quill::neutralFill(opacity).resolve(m_appearance);
}

AdaptiveColor ThemePalette::namedColor(const QString& name) {
    if (name == QLatin1String("coral"))
        return ThemeColors::coral;
    if (name == QLatin1String("amber"))
        return ThemeColors::amber;
    if (name == QLatin1String("blue"))
        return ThemeColors::blue;
    if (name == QLatin1String("mintBright"))
        return ThemeColors::mintBright;
    if (name == QLatin1String("primaryText"))
        return ThemeColors::primaryText;
    if (name == QLatin1String("secondaryText"))
        return ThemeColors::secondaryText;
    return ThemeColors::mint;
}

QColor ThemePalette::tint(const QString& name) const {
    return namedColor(name).resolve(m_appearance);
}

QColor ThemePalette::adaptive(int light, int dark, double lightAlpha, double darkAlpha) const {
    return quill::adaptive(quint32(light), quint32(dark), lightAlpha, darkAlpha)
        .resolve(m_appearance);
}

} // namespace quill
