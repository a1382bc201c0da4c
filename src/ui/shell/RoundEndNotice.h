#pragma once

#include "MinimisedWatch.h"

#include <QObject>
#include <QPointer>
#include <QWindow>

namespace quill {

class AppStore;
class DesktopNotifier;

/// Tells the user about a round that ended while the main window was out of sight
/// (minimised or hidden): a desktop notification whose click brings the window back to the
/// review. While the window is visible the review sheet says it all, so nothing is sent.
/// The notification is withdrawn once the review is saved or abandoned.
class RoundEndNotice : public QObject {
    Q_OBJECT

public:
    RoundEndNotice(AppStore* store, QWindow* mainWindow, DesktopNotifier* notifier,
                   QObject* parent = nullptr);

    static QString completedSummary() { return QStringLiteral("本轮专注完成"); }
    static QString endedSummary() { return QStringLiteral("本轮专注已结束"); }
    static QString body() {
        return QStringLiteral("回到 Quillmere 给这一轮打分，记下结束时的精力。");
    }
    static QString actionLabel() { return QStringLiteral("打开复盘"); }

private:
    void onReviewChanged();
    bool windowOutOfSight() const;

    AppStore* m_store;
    QPointer<QWindow> m_window;
    DesktopNotifier* m_notifier;
    QPointer<MinimisedWatch> m_minimised;
    bool m_shown = false;
};

} // namespace quill
