#include "AdaptiveColor.h"

#include <algorithm>

namespace quill {

QColor colorFromRgb(quint32 rgb, double alpha) {
    QColor c;
    c.setRgbF(float((rgb >> 16) & 0xFF) / 255.0f, float((rgb >> 8) & 0xFF) / 255.0f,
              float(rgb & 0xFF) / 255.0f, float(std::clamp(alpha, 0.0, 1.0)));
    return c;
}

QColor AdaptiveColor::resolve(std::optional<AppearanceMode> appearance) const {
    if (appearance == AppearanceMode::dark)
        return colorFromRgb(darkRgb, darkAlpha);
    return colorFromRgb(lightRgb, lightAlpha);
}

AdaptiveColor neutralFill(double opacity) {
    return {0xFFFFFF, opacity, 0x14211C, std::min(0.85 * opacity, 0.16)};
}

AdaptiveColor adaptive(quint32 light, quint32 dark, double lightAlpha, double darkAlpha) {
    return {dark, darkAlpha, light, lightAlpha};
}

} // namespace quill
