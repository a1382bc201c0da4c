#pragma once

#include "LoopCanvas.h"

#include <string>

namespace ambientgen {

/// Renders the recording named raw into the canvas; false for an unknown name.
bool render(const std::string& raw, LoopCanvas& canvas);

/// The seven recordings, in catalogue order.
const char* const kRecordings[] = {"rain", "waves", "stream", "wind", "fire", "birds", "crickets"};

} // namespace ambientgen
