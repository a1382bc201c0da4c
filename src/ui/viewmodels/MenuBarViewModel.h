#pragma once

#include "StoreViewModel.h"

namespace quill {

/// The tray panel: a compact view of the round with start, pause, skip and the wander
/// signal, plus the ambient sound's play/pause.
class MenuBarViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// "sparkles" during a micro-break, else "leaf.fill".
    Q_PROPERTY(QString headerSymbol READ headerSymbol NOTIFY phaseStateChanged)
    /// "微休息", "专注中" or "Quillmere".
    Q_PROPERTY(QString title READ title NOTIFY phaseStateChanged)
    /// A round is running.
    Q_PROPERTY(bool active READ active NOTIFY phaseStateChanged)
    /// A micro-break is running (one "现在继续" button instead of pause and wander).
    Q_PROPERTY(bool microBreak READ microBreak NOTIFY phaseStateChanged)
    /// A finished round waits for its review: the panel sends the user back to it instead of
    /// offering a new start.
    Q_PROPERTY(bool reviewPending READ reviewPending NOTIFY phaseStateChanged)
    /// "继续" while paused, else "暂停".
    Q_PROPERTY(QString pauseTitle READ pauseTitle NOTIFY phaseStateChanged)
    /// The large line: "N 秒后继续" or "mm:ss".
    Q_PROPERTY(QString timeLine READ timeLine NOTIFY timeChanged)
    /// "开始 N 分钟".
    Q_PROPERTY(QString startTitle READ startTitle NOTIFY settingsDerivedChanged)
    /// "环境音播放中" or "环境音".
    Q_PROPERTY(QString ambientLabel READ ambientLabel NOTIFY ambientChanged)
    /// "暂停" or "播放".
    Q_PROPERTY(QString ambientButtonTitle READ ambientButtonTitle NOTIFY ambientChanged)

public:
    explicit MenuBarViewModel(AppStore& store, QObject* parent = nullptr);

    QString headerSymbol() const;
    QString title() const;
    bool active() const;
    bool microBreak() const { return m_phase == SessionPhase::microBreak; }
    bool reviewPending() const { return m_reviewPending; }
    QString pauseTitle() const;
    QString timeLine() const { return m_timeLine; }
    QString startTitle() const;
    QString ambientLabel() const;
    QString ambientButtonTitle() const;

    /// Starts a round of the selected length.
    Q_INVOKABLE void start();
    Q_INVOKABLE void togglePause();
    Q_INVOKABLE void skipMicroBreak();
    Q_INVOKABLE void recordMindWander();
    Q_INVOKABLE void toggleAmbient();

Q_SIGNALS:
    void phaseStateChanged();
    void timeChanged();
    void settingsDerivedChanged();
    void ambientChanged();

private:
    void connectStore();
    void refreshAll();
    void refreshPhase();
    void refreshTime();

    SessionPhase m_phase = SessionPhase::idle;
    bool m_reviewPending = false;
    QString m_timeLine;
};

} // namespace quill
