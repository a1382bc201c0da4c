#include "ViewText.h"

#include <algorithm>

namespace quill::viewtext {

QString minutesSeconds(qint64 seconds) {
    const qint64 s = std::max<qint64>(seconds, 0);
    return QString::asprintf("%02lld:%02lld", s / 60, s % 60);
}

QString energyLabel(qint64 level) {
    static const char* const kLabels[] = {"很低", "偏低", "一般", "不错", "充沛"};
    return QString::fromUtf8(kLabels[std::clamp<qint64>(level, 1, 5) - 1]);
}

QString dayGreeting(int hour) {
    if (hour < 11)
        return QStringLiteral("早上好");
    if (hour < 14)
        return QStringLiteral("中午好");
    if (hour < 19)
        return QStringLiteral("下午好");
    return QStringLiteral("晚上好");
}

QString phaseSymbol(SessionPhase phase) {
    switch (phase) {
    case SessionPhase::focusing:
        return QStringLiteral("leaf.fill");
    case SessionPhase::paused:
        return QStringLiteral("pause.circle.fill");
    case SessionPhase::microBreak:
        return QStringLiteral("sparkles");
    case SessionPhase::idle:
    case SessionPhase::completed:
        break;
    }
    return QStringLiteral("circle.dotted");
}

QString phaseTint(SessionPhase phase) {
    if (phase == SessionPhase::paused)
        return QStringLiteral("amber");
    if (phase == SessionPhase::microBreak)
        return QStringLiteral("blue");
    return QStringLiteral("mint");
}

double ringProgress(bool active, bool microBreakFull, qint64 elapsed, qint64 planned, double floor,
                    double inactiveValue) {
    if (!active)
        return inactiveValue;
    if (microBreakFull)
        return 1.0;
    const double raw = planned < 1 ? 0.0 : double(elapsed) / double(planned);
    return std::max(std::clamp(raw, 0.0, 1.0), floor);
}

bool isActive(SessionPhase phase) {
    return phase == SessionPhase::focusing || phase == SessionPhase::paused ||
           phase == SessionPhase::microBreak;
}

} // namespace quill::viewtext
