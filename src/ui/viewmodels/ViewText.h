#pragma once

#include "model/SessionPhase.h"

#include <QString>

namespace quill::viewtext {

/// Seconds as "%02d:%02d" minutes and seconds; minutes are not capped (120:00); a negative
/// count shows as 00:00.
QString minutesSeconds(qint64 seconds);
/// "很低" … "充沛" for levels 1–5; other levels are clamped into 1–5 first.
QString energyLabel(qint64 level);
/// "早上好", "中午好", "下午好" or "晚上好" for a local hour 0–23.
QString dayGreeting(int hour);
/// The phase's symbol name on the focus screen.
QString phaseSymbol(SessionPhase phase);
/// The phase's tint name: amber paused, blue micro-break, mint otherwise.
QString phaseTint(SessionPhase phase);
/// Progress of a ring: `inactiveValue` with no active round, otherwise elapsed ÷ planned
/// clamped to 0…1 (0 when planned is below one second) and never below `floor`.
double ringProgress(bool active, bool microBreakFull, qint64 elapsed, qint64 planned, double floor,
                    double inactiveValue);
/// True for focusing, paused and micro-break.
bool isActive(SessionPhase phase);

} // namespace quill::viewtext
