#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QQuickWindow;

namespace quill {

/// Keeps the keyboard inside a modal layer while it is active: takes the focus when the layer
/// opens, walks Tab and Shift+Tab only through the layer's own controls, sends no key to what
/// lies behind, reports Escape, and gives the focus back to where it was when the layer closes.
/// Layers opened on top of each other stack: the one activated last holds the keyboard.
class FocusTrap : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The layer whose controls keep the focus.
    Q_PROPERTY(QQuickItem* scope READ scope WRITE setScope NOTIFY scopeChanged)
    /// True while the layer is shown.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged)
    /// The control that takes the focus when the layer opens; the layer's first control if unset.
    Q_PROPERTY(
        QQuickItem* initialFocus READ initialFocus WRITE setInitialFocus NOTIFY initialFocusChanged)

public:
    explicit FocusTrap(QObject* parent = nullptr) : QObject(parent) {}
    ~FocusTrap() override;

    QQuickItem* scope() const { return m_scope; }
    void setScope(QQuickItem* scope);
    bool active() const { return m_active; }
    void setActive(bool active);
    QQuickItem* initialFocus() const { return m_initialFocus; }
    void setInitialFocus(QQuickItem* item);

    /// True if `item` is the layer or lies inside it.
    bool contains(const QQuickItem* item) const;
    /// The next (or previous) control of the layer after `from`, wrapping around; null if the
    /// layer has none.
    QQuickItem* step(QQuickItem* from, bool forward) const;

Q_SIGNALS:
    void scopeChanged();
    void activeChanged();
    void initialFocusChanged();
    /// Escape was pressed while the layer held the keyboard.
    void escapePressed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void engage();
    void release();
    void focusFirst();

    QPointer<QQuickItem> m_scope;
    QPointer<QQuickItem> m_initialFocus;
    QPointer<QQuickItem> m_returnTo;
    // Where the layer under this one would have sent the focus back to, for when this one
    // was opened from a layer that has closed meanwhile (end dialog -> review sheet).
    QPointer<QQuickItem> m_fallback;
    QPointer<QQuickWindow> m_window;
    // The filtered window, only ever compared: events still arrive while the window is being
    // destroyed, when it is no longer a QQuickWindow and m_window cannot be read.
    const QObject* m_filtered = nullptr;
    bool m_active = false;
    // The last input while active came from the keyboard: the focus it gives back shows its ring.
    bool m_keyboardLast = true;
};

} // namespace quill
