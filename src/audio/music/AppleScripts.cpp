#include "audio/music/AppleScripts.h"

#include <QStringList>

namespace quill::applescript {

QString netEaseBundleIdentifier() {
    return QStringLiteral("com.netease.163music");
}

QString defaultInterpreter() {
    return QStringLiteral("/usr/bin/osascript");
}

QString escapedForStringLiteral(const QString& text) {
    QString escaped = text;
    // Backslashes first, or the ones added before quotes would be doubled again.
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    escaped.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return escaped;
}

QString appleMusicScript(MusicSource source, const QString& playlistName) {
    const QString sourceClause = source == MusicSource::library
                                     ? QStringLiteral("library playlist 1")
                                     : QStringLiteral("first user playlist whose name is \"%1\"")
                                           .arg(escapedForStringLiteral(playlistName));
    const QStringList lines{
        QStringLiteral("tell application \"Music\""),
        QStringLiteral("    activate"),
        QStringLiteral("    set sourcePlaylist to ") + sourceClause,
        QStringLiteral("    set candidateTracks to every track of sourcePlaylist whose enabled is "
                       "true"),
        QStringLiteral("    set trackCount to count of candidateTracks"),
        QStringLiteral("    if trackCount is 0 then error \"这个范围里没有可播放的歌曲\""),
        QStringLiteral("    set chosenTrack to item (random number from 1 to trackCount) of "
                       "candidateTracks"),
        QStringLiteral("    play chosenTrack"),
        QStringLiteral("    return (name of chosenTrack) & \" — \" & (artist of chosenTrack)"),
        QStringLiteral("end tell"),
    };
    return lines.join(QLatin1Char('\n'));
}

QString netEaseScript(int timeoutSeconds) {
    const QString timeout = QString::number(qMax(0, timeoutSeconds));
    const QStringList lines{
        QStringLiteral("set playNames to {\"播放\", \"Play\"}"),
        QStringLiteral("set pauseNames to {\"暂停\", \"Pause\"}"),
        QStringLiteral("set deadline to (current date) + ") + timeout,
        QStringLiteral("set lastClick to missing value"),
        QStringLiteral("set lastProblem to \"网易云音乐还没有准备好\""),
        QStringLiteral("tell application \"System Events\""),
        QStringLiteral("    repeat"),
        QStringLiteral("        try"),
        QStringLiteral("            set netEase to first application process whose bundle "
                       "identifier is \"") +
            netEaseBundleIdentifier() + QLatin1Char('"'),
        QStringLiteral("            set controlMenu to missing value"),
        QStringLiteral(
            "            repeat with barItem in menu bar items of menu bar 1 of netEase"),
        QStringLiteral("                if name of barItem is in {\"控制\", \"Controls\"} then set "
                       "controlMenu to menu 1 of barItem"),
        QStringLiteral("            end repeat"),
        QStringLiteral("            if controlMenu is missing value then error "
                       "\"找不到网易云音乐的“控制”菜单\""),
        QStringLiteral("            set playItem to menu item 1 of controlMenu"),
        QStringLiteral("            set itemName to name of playItem"),
        QStringLiteral("            if itemName is in pauseNames then"),
        QStringLiteral("                if lastClick is missing value then return "
                       "\"网易云音乐（原本就在播放）\""),
        QStringLiteral("                return \"网易云音乐当前队列\""),
        QStringLiteral("            end if"),
        QStringLiteral("            if itemName is not in playNames then error "
                       "\"无法识别网易云音乐的播放菜单：\" & itemName"),
        QStringLiteral("            -- "
                       "冷启动时队列可能还没加载完，第一次点击会被忽略；间隔几秒再补点，"
                       "避免把刚开始的播放又点成暂停。"),
        QStringLiteral("            if enabled of playItem and (lastClick is missing value or "
                       "((current date) - lastClick) >= 3) then"),
        QStringLiteral("                click playItem"),
        QStringLiteral("                set lastClick to current date"),
        QStringLiteral("            end if"),
        QStringLiteral("        on error errMsg number errNum"),
        QStringLiteral("            if errNum is -1743 or errNum is -25211 then error errMsg "
                       "number errNum"),
        QStringLiteral("            set lastProblem to errMsg"),
        QStringLiteral("        end try"),
        QStringLiteral("        if (current date) > deadline then"),
        QStringLiteral("            if lastClick is missing value then error lastProblem"),
        QStringLiteral(
            "            error \"已发送播放指令，但网易云音乐没有开始播放（播放队列可能为空）\""),
        QStringLiteral("        end if"),
        QStringLiteral("        delay 0.2"),
        QStringLiteral("    end repeat"),
        QStringLiteral("end tell"),
    };
    return lines.join(QLatin1Char('\n'));
}

} // namespace quill::applescript
