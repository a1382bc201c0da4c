#include "MusicSettingsViewModel.h"

#include "model/TextRules.h"

namespace quill {

MusicSettingsViewModel::MusicSettingsViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent), m_probe(createMusicPlayerProbe()) {
    follow(&AppStore::settingsChanged, &MusicSettingsViewModel::changed);
    follow(&AppStore::musicMessageChanged, &MusicSettingsViewModel::messageChanged);
    connect(&store, &AppStore::settingsChanged, this, [this] {
        if (service() != m_lastService)
            refreshPlayer();
    });
}

MusicSettingsViewModel::~MusicSettingsViewModel() {
    *m_alive = false;
}

void MusicSettingsViewModel::setProbe(std::shared_ptr<MusicPlayerProbe> probe) {
    m_probe = std::move(probe);
    refreshPlayer();
}

AppSettings MusicSettingsViewModel::current() const {
    return store().settings();
}

MusicService MusicSettingsViewModel::service() const {
    return current().effectiveMusicService();
}

bool MusicSettingsViewModel::autoPlay() const {
    return current().autoPlayMusic;
}

void MusicSettingsViewModel::setAutoPlay(bool on) {
    editSettings([on](AppSettings& s) { s.autoPlayMusic = on; });
}

QString MusicSettingsViewModel::autoPlayTitle() const {
    return netEase() ? QStringLiteral("结束后自动播放当前队列")
                     : QStringLiteral("结束后自动随机播放");
}

QString MusicSettingsViewModel::cardSymbol() const {
    return netEase() ? QStringLiteral("cloud.fill") : QStringLiteral("music.note");
}

bool MusicSettingsViewModel::netEase() const {
    return service() == MusicService::netEase;
}

QStringList MusicSettingsViewModel::serviceOptions() {
    return {displayName(MusicService::appleMusic), displayName(MusicService::netEase)};
}

int MusicSettingsViewModel::serviceIndex() const {
    return netEase() ? 1 : 0;
}

void MusicSettingsViewModel::setServiceIndex(int index) {
    if (index != 0 && index != 1)
        return;
    const MusicService chosen = index == 1 ? MusicService::netEase : MusicService::appleMusic;
    editSettings([chosen](AppSettings& s) { s.musicService = chosen; });
}

QStringList MusicSettingsViewModel::sourceOptions() {
    return {rawValue(MusicSource::library), rawValue(MusicSource::playlist)};
}

int MusicSettingsViewModel::sourceIndex() const {
    return current().musicSource == MusicSource::playlist ? 1 : 0;
}

void MusicSettingsViewModel::setSourceIndex(int index) {
    if (index != 0 && index != 1)
        return;
    const MusicSource chosen = index == 1 ? MusicSource::playlist : MusicSource::library;
    editSettings([chosen](AppSettings& s) { s.musicSource = chosen; });
}

bool MusicSettingsViewModel::playlistShown() const {
    return !netEase() && current().musicSource == MusicSource::playlist;
}

QString MusicSettingsViewModel::playlistName() const {
    return current().playlistName;
}

void MusicSettingsViewModel::setPlaylistName(const QString& name) {
    if (name == playlistName())
        return;
    editSettings([&name](AppSettings& s) { s.playlistName = name; });
}

QString MusicSettingsViewModel::playlistCaption() {
#ifdef Q_OS_MACOS
    return QStringLiteral("与“音乐”App 中的名称完全一致");
#else
    return QStringLiteral("与播放器中的播放列表名称完全一致");
#endif
}

QString MusicSettingsViewModel::netEaseNote() {
#ifdef Q_OS_MACOS
    return QStringLiteral("网易云音乐会在后台打开客户端并播放当前队列，已在播放时不会被打断。"
                          "需要在系统设置中允许辅助功能控制，重新打包后要重新授权。");
#else
    return QStringLiteral("网易云音乐会在后台打开客户端并播放当前队列，已在播放时不会被打断。");
#endif
}

QString MusicSettingsViewModel::hintTitle() const {
#ifdef Q_OS_MACOS
    return netEase() ? QStringLiteral("首次使用需开启辅助功能权限")
                     : QStringLiteral("首次测试会出现系统授权");
#else
    if (!m_searched)
        return QStringLiteral("正在查找正在运行的播放器");
    if (!m_player.isEmpty())
        return QStringLiteral("将控制：") + m_player;
    return netEase() ? QStringLiteral("没有找到正在运行的网易云音乐")
                     : QStringLiteral("没有找到正在运行的音乐播放器");
#endif
}

QString MusicSettingsViewModel::hintDetail() const {
#ifdef Q_OS_MACOS
    return netEase() ? QStringLiteral("请在系统设置中允许Quillmere控制网易云音乐。")
                     : QStringLiteral("请选择“允许”Quillmere控制“音乐”。");
#else
    if (netEase())
        return m_searched && m_player.isEmpty() ? QStringLiteral("测试时会在后台打开客户端")
                                                : QStringLiteral("通过 MPRIS 控制网易云音乐客户端");
    return m_searched && m_player.isEmpty() ? QStringLiteral("请先打开一个支持 MPRIS 的音乐播放器")
                                            : QStringLiteral("通过 MPRIS 控制正在运行的播放器");
#endif
}

bool MusicSettingsViewModel::testEnabled() const {
    const AppSettings s = current();
    return !(s.effectiveMusicService() == MusicService::appleMusic &&
             s.musicSource == MusicSource::playlist && text::trimmed(s.playlistName).isEmpty());
}

QString MusicSettingsViewModel::message() const {
    return store().musicMessageText();
}

QString MusicSettingsViewModel::messageTint() const {
    return message().contains(QStringLiteral("失败")) ? QStringLiteral("coral")
                                                      : QStringLiteral("mint");
}

void MusicSettingsViewModel::refreshPlayer() {
    m_lastService = service();
#ifndef Q_OS_MACOS
    if (!m_probe)
        return;
    const int search = ++m_search;
    m_searched = false;
    std::weak_ptr<bool> alive = m_alive;
    m_probe->find(m_lastService, [this, alive, search](const QString& player) {
        if (alive.expired() || search != m_search)
            return;
        m_searched = true;
        m_player = player;
        Q_EMIT hintChanged();
    });
#endif
}

void MusicSettingsViewModel::testMusic() {
    if (testEnabled())
        store().testMusic();
}

} // namespace quill
