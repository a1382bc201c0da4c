#pragma once

#include "model/SettingsEnums.h"

#include <QColor>
#include <optional>

namespace quill {

/// A colour with one RGB value and opacity per appearance, resolved when it is drawn.
struct AdaptiveColor {
    quint32 darkRgb = 0;
    double darkAlpha = 1.0;
    quint32 lightRgb = 0;
    double lightAlpha = 1.0;

    /// The dark pair for the dark appearance; the light pair for light and for no match.
    QColor resolve(std::optional<AppearanceMode> appearance) const;

    bool operator==(const AdaptiveColor&) const = default;
};

/// A 24-bit RGB value split into its channels, with an opacity.
QColor colorFromRgb(quint32 rgb, double alpha = 1.0);

/// The neutral overlay of tracks, chips and fields: white at `opacity` when dark, the
/// primary text colour at min(0.85 × opacity, 0.16) when light.
AdaptiveColor neutralFill(double opacity);

/// Light and dark values given in that order, as the ambient tiles describe theirs.
AdaptiveColor adaptive(quint32 light, quint32 dark, double lightAlpha, double darkAlpha);

} // namespace quill
