#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// Whether anyone can see a window: exposed, and neither hidden nor minimised. A window that
/// the window system covered up entirely, or unmapped as a compositor does on minimising
/// (which Wayland never reports as minimised), is not exposed. What animates only for the
/// eye stops while this is false.
class WindowShown : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QWindow* window READ window WRITE setWindow NOTIFY windowChanged)
    Q_PROPERTY(bool shown READ shown NOTIFY shownChanged)

public:
    explicit WindowShown(QObject* parent = nullptr);

    QWindow* window() const { return m_window; }
    void setWindow(QWindow* window);
    /// True without a window, so what nobody placed anywhere still works as before.
    bool shown() const { return m_shown; }

Q_SIGNALS:
    void windowChanged();
    void shownChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void update();

    QPointer<QWindow> m_window;
    bool m_shown = true;
};

} // namespace quill
