#pragma once

#include "AdaptiveColor.h"

namespace quill::ThemeColors {

// The palette every screen draws from: dark value first, then light.
inline constexpr AdaptiveColor background{0x0E1518, 1.0, 0xF3F7F5, 1.0};
inline constexpr AdaptiveColor sidebarBackground{0x0B1215, 1.0, 0xEAF1EE, 1.0};
inline constexpr AdaptiveColor panel{0xFFFFFF, 0.065, 0xFFFFFF, 0.78};
inline constexpr AdaptiveColor panelStrong{0xFFFFFF, 0.095, 0xFFFFFF, 0.96};
inline constexpr AdaptiveColor mint{0x78D7B2, 1.0, 0x219A71, 1.0};
inline constexpr AdaptiveColor mintBright{0xA5F1D1, 1.0, 0x56C59A, 1.0};
inline constexpr AdaptiveColor coral{0xFF9A79, 1.0, 0xD76144, 1.0};
inline constexpr AdaptiveColor amber{0xF4C978, 1.0, 0xB47A17, 1.0};
inline constexpr AdaptiveColor blue{0x84B9FF, 1.0, 0x347DC4, 1.0};
inline constexpr AdaptiveColor primaryText{0xF1F6F3, 1.0, 0x14211C, 1.0};
inline constexpr AdaptiveColor secondaryText{0x9CACA7, 1.0, 0x61716A, 1.0};
inline constexpr AdaptiveColor hairline{0xFFFFFF, 0.09, 0x14211C, 0.10};
// The background gradient's second and third stops (the first is `background`).
inline constexpr AdaptiveColor gradientMiddle{0x101A1C, 1.0, 0xEDF4F0, 1.0};
inline constexpr AdaptiveColor gradientEnd{0x11191B, 1.0, 0xF7F9F8, 1.0};
/// Text on mint and coral fills, the same in both appearances.
inline constexpr AdaptiveColor onAccent{0x0B1713, 1.0, 0x0B1713, 1.0};
/// The keyboard focus ring: bright mint on dark, deep mint on light, clear of both backdrops.
inline constexpr AdaptiveColor focusRing{0xA5F1D1, 1.0, 0x177A58, 1.0};

} // namespace quill::ThemeColors
