#include "UiHarness.h"

#include "storage/Persistence.h"
#include "support/SampleSession.h"
#include "ui/UiModule.h"
#include "ui/theme/Theme.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

namespace quill::test {

namespace {
void prepareOnce() {
    static bool done = false;
    if (done)
        return;
    done = true;
    linkUiModule();
    UiRuntime::prepareApplication();
    // Every animation lands at once, so what a test reads is the end state of each change.
    Theme::setDefaultMotion(0.0);
    // The software renderer draws the same pixels everywhere and needs no GPU.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

QQuickItem* findIn(QQuickItem* root, const QString& name) {
    if (!root)
        return nullptr;
    if (root->objectName() == name)
        return root;
    const auto children = root->childItems();
    for (QQuickItem* child : children)
        if (QQuickItem* found = findIn(child, name))
            return found;
    return nullptr;
}
} // namespace

UiHarness::UiHarness(const std::function<void(FakeServices&)>& seed) {
    prepareOnce();
    if (seed)
        seed(fakes);
    m_runtime = std::make_unique<UiRuntime>(fakes.services());
    if (!m_runtime->load())
        ADD_FAILURE() << "main window did not load";
    // Where the floating timer was left stays with the test, not in the user's state home.
    if (QObject* floating =
            window()->findChild<QObject*>(QStringLiteral("floatingTimerController")))
        floating->setProperty("placeFile",
                              fakes.data->directory() + QStringLiteral("-floating-timer-position"));
    settle();
}

UiHarness::~UiHarness() = default;

QQuickWindow* UiHarness::trayPanel() const {
    return window() ? window()->findChild<QQuickWindow*>(QStringLiteral("trayPanel")) : nullptr;
}

QObject* UiHarness::trayIcon() const {
    return window() ? window()->findChild<QObject*>(QStringLiteral("trayIcon")) : nullptr;
}

QQuickItem* UiHarness::item(const QString& name, QQuickWindow* in) const {
    QQuickWindow* w = in ? in : window();
    return w ? findIn(w->contentItem(), name) : nullptr;
}

bool UiHarness::isShown(const QString& name, QQuickWindow* in) const {
    QQuickItem* it = item(name, in);
    return it && it->isVisible() && it->opacity() > 0.0;
}

QString UiHarness::text(const QString& name, QQuickWindow* in) const {
    QQuickItem* it = item(name, in);
    if (!it) {
        ADD_FAILURE() << "no item named " << name.toStdString();
        return {};
    }
    return it->property("text").toString();
}

void UiHarness::click(const QString& name, QQuickWindow* in) {
    QQuickWindow* w = in ? in : window();
    settle(w);
    QQuickItem* it = item(name, w);
    if (!it || !it->isVisible()) {
        ADD_FAILURE() << "cannot click " << name.toStdString() << (it ? " (hidden)" : " (missing)");
        return;
    }
    clickAt(it->mapToScene(QPointF(it->width() / 2, it->height() / 2)), w);
}

void UiHarness::clickAt(QPointF scenePoint, QQuickWindow* in) {
    const QPointer<QQuickWindow> w = in ? in : window();
    QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, scenePoint.toPoint());
    settle(w ? w.data() : window());
}

void UiHarness::pressKey(Qt::Key key, QQuickWindow* in) {
    QQuickWindow* w = in ? in : window();
    QTest::keyClick(w, key);
    settle(w);
}

void UiHarness::typeText(const QString& text, QQuickWindow* in) {
    QQuickWindow* w = in ? in : window();
    for (QChar c : text)
        QTest::keyClick(w, c.toLatin1());
    settle(w);
}

void UiHarness::advance(qint64 ms) {
    fakes.scheduler->advance(ms);
    settle();
}

void UiHarness::settle(QQuickWindow* in) {
    // A click may close the window it landed in (the floating timer's restore button).
    const QPointer<QQuickWindow> w = in ? in : window();
    QCoreApplication::processEvents();
    // A grab polishes and renders synchronously: positioners have placed their children and
    // every animation-free binding shows its current value afterwards.
    if (w && w->isVisible())
        (void)w->grabWindow();
}

StudySession sessionAt(const QDateTime& start, qint64 focusedSeconds,
                       const std::optional<QString>& task) {
    StudySession s = sampleSession(start, focusedSeconds, focusedSeconds + 120);
    s.taskName = task;
    return s;
}

std::function<void(FakeServices&)> seedSessions(const QList<StudySession>& sessions) {
    return [sessions](FakeServices& f) {
        Persistence::save(f.data->directory(), AppSettings{}, sessions);
    };
}

} // namespace quill::test
