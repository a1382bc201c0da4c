#include "Symbols.h"

#include "SymbolDrawing.h"
#include "ui/UiLog.h"

#include <QFontDatabase>
#include <QSet>
#include <QStandardPaths>
#include <array>

namespace quill {

namespace {

struct SymbolEntry {
    const char* name; ///< the symbol name used by the screens
    char16_t glyph;   ///< code point in the Material Icons font
    const char* icon; ///< the font's own icon name, for whoever maintains the table
    bool outline;     ///< drawn stroked because the font only has the filled form
};

constexpr std::array kTable{
    // shell and sidebar
    SymbolEntry{"leaf.fill", 0xea35, "eco", false},
    SymbolEntry{"leaf", 0xea35, "eco", true},
    SymbolEntry{"timer", 0xe425, "timer", false},
    SymbolEntry{"chart.xyaxis.line", 0xe6e1, "show_chart", false},
    SymbolEntry{"clock.arrow.circlepath", 0xe889, "history", false},
    SymbolEntry{"slider.horizontal.3", 0xe429, "tune", false},
    SymbolEntry{"flame.fill", 0xef55, "local_fire_department", false},
    SymbolEntry{"sun.max.fill", 0xe430, "wb_sunny", false},
    SymbolEntry{"moon.stars.fill", 0xea46, "nights_stay", false},
    SymbolEntry{"checkmark.circle.fill", 0xe86c, "check_circle", false},
    SymbolEntry{"exclamationmark.triangle.fill", 0xe002, "warning", false},
    SymbolEntry{"sparkles", 0xe65f, "auto_awesome", false},
    SymbolEntry{"waveform", 0xe1b8, "graphic_eq", false},
    // focus screen
    SymbolEntry{"clock.fill", 0xefd6, "access_time_filled", false},
    SymbolEntry{"scope", 0xe1b3, "gps_fixed", false},
    SymbolEntry{"pause.circle.fill", 0xe1a2, "pause_circle", false},
    SymbolEntry{"circle.dotted", 0xe836, "radio_button_unchecked", false},
    SymbolEntry{"hourglass", 0xe88b, "hourglass_empty", false},
    SymbolEntry{"bell.badge", 0xe7f7, "notifications_active", false},
    SymbolEntry{"eye", 0xe8f4, "visibility", false},
    SymbolEntry{"play.fill", 0xe037, "play_arrow", false},
    SymbolEntry{"pause.fill", 0xe034, "pause", false},
    SymbolEntry{"stop.fill", 0xe047, "stop", false},
    SymbolEntry{"arrow.right", 0xe5c8, "arrow_forward", false},
    SymbolEntry{"battery.25", 0xebe0, "battery_2_bar", false},
    SymbolEntry{"figure.mind.and.body", 0xea78, "self_improvement", false},
    SymbolEntry{"dial.medium", 0xe9e4, "speed", false},
    SymbolEntry{"plus", 0xe145, "add", false},
    SymbolEntry{"xmark", 0xe5cd, "close", false},
    SymbolEntry{"minus", 0xe15b, "remove", false},
    SymbolEntry{"circle.fill", 0xef4a, "circle", false},
    SymbolEntry{"circle", 0xe836, "radio_button_unchecked", false},
    SymbolEntry{"cloud.fill", 0xe2bd, "cloud", false},
    SymbolEntry{"music.note", 0xe405, "music_note", false},
    // ambient sounds
    SymbolEntry{"speaker.fill", 0xe04e, "volume_mute", false},
    SymbolEntry{"speaker.wave.2.fill", 0xe050, "volume_up", false},
    SymbolEntry{"cloud.rain.fill", 0xf1ad, "umbrella", false},
    SymbolEntry{"water.waves", 0xe176, "waves", false},
    SymbolEntry{"drop.fill", 0xe798, "water_drop", false},
    SymbolEntry{"wind", 0xefd8, "air", false},
    SymbolEntry{"bird.fill", 0xe00b, "flutter_dash", false},
    // round end and review
    SymbolEntry{"trash.fill", 0xe872, "delete", false},
    SymbolEntry{"chevron.right", 0xe5cc, "chevron_right", false},
    SymbolEntry{"checkmark", 0xe5ca, "check", false},
    SymbolEntry{"tag.fill", 0xf05b, "sell", false},
    SymbolEntry{"arrow.up.left.and.arrow.down.right", 0xf1ce, "open_in_full", false},
    // insights and history
    SymbolEntry{"brain.head.profile", 0xea4a, "psychology", false},
    SymbolEntry{"arrow.up.forward", 0xf1e1, "north_east", false},
    SymbolEntry{"bolt.heart", 0xea0b, "bolt", false},
    SymbolEntry{"calendar", 0xe935, "calendar_today", false},
    SymbolEntry{"figure.stairs", 0xf1a9, "stairs", false},
    SymbolEntry{"tag", 0xf05b, "sell", true},
    SymbolEntry{"waveform.path.ecg", 0xeaa2, "monitor_heart", false},
    SymbolEntry{"chart.line.uptrend.xyaxis", 0xe6e1, "show_chart", false},
    SymbolEntry{"text.magnifyingglass", 0xf02f, "manage_search", false},
    SymbolEntry{"square.and.arrow.up", 0xe6b8, "ios_share", false},
    SymbolEntry{"circle.grid.2x2.fill", 0xe9b0, "grid_view", false},
    // settings screen
    SymbolEntry{"bell.badge.fill", 0xe7f7, "notifications_active", false},
    SymbolEntry{"shuffle", 0xe043, "shuffle", false},
    SymbolEntry{"internaldrive.fill", 0xe1db, "storage", false},
    SymbolEntry{"trash", 0xe92e, "delete_outline", false},
    SymbolEntry{"quote.opening", 0xe244, "format_quote", false},
    // placeholder screens
    SymbolEntry{"hammer.fill", 0xe869, "build", false},
};

const SymbolEntry* find(const QString& name) {
    for (const auto& entry : kTable)
        if (name == QLatin1String(entry.name))
            return &entry;
    return nullptr;
}

} // namespace

QString Symbols::glyph(const QString& name) {
    if (const SymbolEntry* entry = find(name))
        return QString(QChar(entry->glyph));
    if (name.isEmpty())
        return QString(); // "no symbol", as buttons without one ask for
    static QSet<QString> reported;
    if (!reported.contains(name)) {
        reported.insert(name);
        qCWarning(lcUi) << "Unknown symbol name:" << name;
    }
    return QString();
}

void Symbols::preferPlainFontFile() {
    // Debian's package installs the font as TrueType, WOFF and WOFF2, and fontconfig may hand
    // out the WOFF2 copy first. FreeType then inflates it into the heap (350 KB, and a few ms
    // of Brotli at start-up); the TrueType file is mapped from disk instead. Of copies with
    // the same family and style, the one registered last is used, so the system's fonts are
    // listed before ours is added.
    static const QString kFile =
        QStringLiteral("fonts/truetype/material-design-icons-iconfont/MaterialIcons-Regular.ttf");
    const QString path = QStandardPaths::locate(QStandardPaths::GenericDataLocation, kFile);
    if (path.isEmpty() || !QFontDatabase::hasFamily(fontFamily()))
        return;
    if (QFontDatabase::addApplicationFont(path) < 0)
        qCWarning(lcUi) << "The icon font could not be registered:" << path;
}

bool Symbols::contains(const QString& name) {
    return find(name) != nullptr;
}

bool Symbols::isOutline(const QString& name) {
    const SymbolEntry* entry = find(name);
    return entry && entry->outline;
}

bool Symbols::isDrawn(const QString& name) {
    return SymbolDrawing::draws(name);
}

QStringList Symbols::names() {
    QStringList out;
    for (const auto& entry : kTable)
        out << QString::fromLatin1(entry.name);
    return out;
}

} // namespace quill
