#pragma once

namespace quill {

/// Colour meaning shared by every screen.
enum class ThemeTint { mint, amber, blue, coral };

} // namespace quill
