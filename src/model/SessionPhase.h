#pragma once

// SessionPhase is declared with the other meta-enumerations of the namespace.
#include "model/SettingsEnums.h"
