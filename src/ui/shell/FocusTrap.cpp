#include "FocusTrap.h"

#include <QKeyEvent>
#include <QQuickWindow>

namespace quill {

namespace {
QList<FocusTrap*>& activeTraps() {
    static QList<FocusTrap*> traps;
    return traps;
}

bool takesTabFocus(const QQuickItem* item) {
    return item && item->activeFocusOnTab() && item->isVisible() && item->isEnabled();
}
} // namespace

FocusTrap::~FocusTrap() {
    activeTraps().removeAll(this);
    if (m_window)
        m_window->removeEventFilter(this);
}

void FocusTrap::setScope(QQuickItem* scope) {
    if (m_scope == scope)
        return;
    m_scope = scope;
    Q_EMIT scopeChanged();
    if (m_active && !m_window)
        engage();
}

void FocusTrap::setInitialFocus(QQuickItem* item) {
    if (m_initialFocus == item)
        return;
    m_initialFocus = item;
    Q_EMIT initialFocusChanged();
}

void FocusTrap::setActive(bool active) {
    if (m_active == active)
        return;
    m_active = active;
    Q_EMIT activeChanged();
    if (active)
        engage();
    else
        release();
}

bool FocusTrap::contains(const QQuickItem* item) const {
    return item && m_scope && (item == m_scope || m_scope->isAncestorOf(item));
}

QQuickItem* FocusTrap::step(QQuickItem* from, bool forward) const {
    if (!m_scope)
        return nullptr;
    QQuickItem* start = from ? from : m_scope.data();
    QQuickItem* item = start;
    // The window's focus chain is a ring over every item; walk it until it comes back
    // inside the layer. A bound keeps a broken chain from looping for ever.
    for (int i = 0; i < 4096; ++i) {
        item = item->nextItemInFocusChain(forward);
        if (!item || (item == start && i > 0))
            break;
        if (item != m_scope && contains(item) && takesTabFocus(item))
            return item;
    }
    return takesTabFocus(from) && contains(from) ? from : nullptr;
}

void FocusTrap::engage() {
    if (!m_scope || !m_scope->window())
        return;
    m_window = m_scope->window();
    QQuickItem* current = m_window->activeFocusItem();
    if (!contains(current))
        m_returnTo = current;
    m_fallback = nullptr;
    for (FocusTrap* other : activeTraps())
        if (other != this && other->contains(current))
            m_fallback = other->m_returnTo;
    activeTraps().removeAll(this);
    activeTraps().append(this);
    // Installed last, so asked first: a layer opened over another one holds the keyboard.
    m_window->removeEventFilter(this);
    m_window->installEventFilter(this);
    m_filtered = m_window.get();
    // The layer's controls become enabled and visible in the same pass that activates it;
    // take the focus once they have.
    QMetaObject::invokeMethod(
        this, [this] { focusFirst(); }, Qt::QueuedConnection);
}

void FocusTrap::focusFirst() {
    if (!m_active || !m_scope)
        return;
    if (contains(m_window ? m_window->activeFocusItem() : nullptr) &&
        m_window->activeFocusItem() != m_scope)
        return;
    QQuickItem* target =
        takesTabFocus(m_initialFocus) ? m_initialFocus.data() : step(nullptr, true);
    if (target)
        target->forceActiveFocus(Qt::TabFocusReason);
    else
        m_scope->forceActiveFocus(Qt::OtherFocusReason);
}

void FocusTrap::release() {
    activeTraps().removeAll(this);
    if (!m_window)
        return;
    m_window->removeEventFilter(this);
    m_filtered = nullptr;
    QPointer<QQuickWindow> window = m_window;
    QPointer<QQuickItem> returnTo = m_returnTo;
    QPointer<QQuickItem> fallback = m_fallback;
    const Qt::FocusReason reason = m_keyboardLast ? Qt::TabFocusReason : Qt::OtherFocusReason;
    m_returnTo = nullptr;
    m_fallback = nullptr;
    m_window = nullptr;
    // Closing a layer usually changes what lies behind it in the same pass (an abandoned
    // round hides its end button); give the focus back once that has settled.
    QMetaObject::invokeMethod(
        this,
        [this, window, returnTo, fallback, reason] {
            if (m_active || !window)
                return;
            QQuickItem* current = window->activeFocusItem();
            // Hiding the layer leaves the focus on the layer or on an enclosing focus scope.
            const bool lost = !current || contains(current) || !current->isVisible() ||
                              (m_scope && current->isAncestorOf(m_scope));
            if (!lost)
                return; // the user or the app has put the focus somewhere meanwhile
            for (QQuickItem* candidate : {returnTo.data(), fallback.data()}) {
                if (candidate && candidate->isVisible() && candidate->isEnabled()) {
                    candidate->forceActiveFocus(reason);
                    return;
                }
            }
            // Nothing to go back to: the window holds the focus, and Tab starts from the top.
            window->contentItem()->forceActiveFocus(Qt::OtherFocusReason);
        },
        Qt::QueuedConnection);
}

bool FocusTrap::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_filtered || !m_active)
        return QObject::eventFilter(watched, event);
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::TouchBegin)
        m_keyboardLast = false;
    if (type == QEvent::KeyPress)
        m_keyboardLast = true;
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::ShortcutOverride)
        return false;
    auto* key = static_cast<QKeyEvent*>(event);
    QQuickItem* current = m_window->activeFocusItem();
    const bool inside = contains(current) && current != m_scope;
    const bool plainTab = (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) &&
                          !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (plainTab || key->key() == Qt::Key_Escape) {
        if (type == QEvent::ShortcutOverride) {
            event->accept(); // ours, whatever shortcut might want it
            return true;
        }
        if (type == QEvent::KeyPress) {
            if (key->key() == Qt::Key_Escape) {
                Q_EMIT escapePressed();
            } else {
                const bool forward =
                    key->key() == Qt::Key_Tab && !(key->modifiers() & Qt::ShiftModifier);
                if (QQuickItem* next = step(inside ? current : nullptr, forward))
                    next->forceActiveFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            }
        }
        return true;
    }
    if (!inside) {
        // Nothing behind the layer hears a key; the first one brings the focus into it.
        if (type == QEvent::KeyPress)
            focusFirst();
        return true;
    }
    return false;
}

} // namespace quill
