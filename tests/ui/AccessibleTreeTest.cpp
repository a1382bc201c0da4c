#include "UiHarness.h"
#include "ui/shell/FloatingTimerController.h"
#include "ui/theme/Symbols.h"

#include <QAccessible>
#include <QFont>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

// The tree a screen reader gets is built from these interfaces: the desktop bridge serves
// each one as it is, and its "Press" calls the same doAction. Walking them here reaches every
// state of the window in virtual time, which a live AT-SPI client could not.
class AccessibleTree {
public:
    explicit AccessibleTree(QQuickWindow* window) {
        walk(QAccessible::queryAccessibleInterface(window));
    }

    const QList<QAccessibleInterface*>& nodes() const { return m_nodes; }
    bool contains(QAccessibleInterface* node) const { return m_set.contains(node); }

private:
    void walk(QAccessibleInterface* node) {
        if (!node || node->state().invisible || m_set.contains(node))
            return;
        m_set.insert(node);
        m_nodes << node;
        for (int i = 0; i < node->childCount(); ++i)
            walk(node->child(i));
    }
    QList<QAccessibleInterface*> m_nodes;
    QSet<QAccessibleInterface*> m_set;
};

QString squeezed(QString s) {
    static const QRegularExpression space(QStringLiteral("\\s+"));
    return s.remove(space);
}

bool isControl(QAccessible::Role role) {
    switch (role) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
        return true;
    default:
        return false;
    }
}

QString describe(QQuickItem* item) {
    QStringList path;
    for (QQuickItem* it = item; it; it = it->parentItem())
        if (!it->objectName().isEmpty()) {
            path << it->objectName();
            if (path.size() == 2)
                break;
        }
    return path.join(QStringLiteral(" in "));
}

// Every drawn text the tree does not carry: neither the text's own node nor any node above it
// says it. Symbols are drawn with a text item too; they are named by their control.
void findUnreadTexts(QQuickItem* item, const AccessibleTree& tree, QStringList& out) {
    if (!item->isVisible() || item->opacity() <= 0.0)
        return;
    if (item->inherits("QQuickText") &&
        item->property("font").value<QFont>().family() != Symbols::fontFamily()) {
        QString text = item->property("text").toString();
        if (item->property("textFormat").toInt() != 0) // anything but plain text may carry markup
            text = QTextDocumentFragment::fromHtml(text).toPlainText();
        const QString wanted = squeezed(text);
        bool read = wanted.isEmpty();
        for (QQuickItem* it = item; it && !read; it = it->parentItem()) {
            QAccessibleInterface* node = QAccessible::queryAccessibleInterface(it);
            if (node && tree.contains(node))
                read = squeezed(node->text(QAccessible::Name)).contains(wanted) ||
                       squeezed(node->text(QAccessible::Description)).contains(wanted);
        }
        if (!read)
            out << QStringLiteral("\"%1\" (%2)").arg(text, describe(item));
    }
    for (QQuickItem* child : item->childItems())
        findUnreadTexts(child, tree, out);
}

// Walks one window from a starting state: in each state every drawn text must be in the tree
// and every control named; then the next button not yet tried is pressed through its
// accessible action, which must do what a click does, until no untried button is left.
class Crawl {
public:
    explicit Crawl(UiHarness& ui, QQuickWindow* window = nullptr)
        : m_ui(ui), m_window(window ? window : ui.window()) {}

    void run(int maxPresses = 80) {
        for (int step = 0; step < maxPresses; ++step) {
            const AccessibleTree tree(m_window);
            checkState(tree);
            QAccessibleInterface* next = nextUntried(tree);
            if (!next)
                return;
            press(next);
        }
    }

    // Sidebar rows change the whole screen: the tests press them one by one instead.
    QSet<QString> skipped;
    QStringList failures;

private:
    static QString keyOf(QAccessibleInterface* node) {
        auto* item = qobject_cast<QQuickItem*>(node->object());
        return node->text(QAccessible::Name) + QLatin1Char('@') +
               (item ? describe(item) : QString());
    }

    // A button is tried again when its name says it does something else now (开始 → 暂停),
    // not when only a count in it moved.
    static QString triedKey(QAccessibleInterface* node) {
        static const QRegularExpression digits(QStringLiteral("\\d+"));
        return QString(node->text(QAccessible::Name)).remove(digits) + QLatin1Char('@') +
               QString::number(quintptr(node->object()));
    }

    void fail(const QString& message) {
        if (!failures.contains(message))
            failures << message;
    }

    void checkState(const AccessibleTree& tree) {
        QStringList unread;
        findUnreadTexts(m_window->contentItem(), tree, unread);
        for (const QString& text : unread)
            fail(QStringLiteral("not in the tree: ") + text);
        static const QRegularExpression chinese(QStringLiteral("[\\x{4e00}-\\x{9fff}]"));
        for (QAccessibleInterface* node : tree.nodes()) {
            auto* item = qobject_cast<QQuickItem*>(node->object());
            if (!isControl(node->role()))
                continue;
            if (!chinese.match(node->text(QAccessible::Name)).hasMatch())
                fail(QStringLiteral("a control without a name: ") + describe(item));
            // Dimmed and deaf to clicks, itself or through what holds it: a reader must say so.
            if (item && !item->isEnabled() && !node->state().disabled)
                fail(QStringLiteral("said to be enabled while disabled: ") + keyOf(node));
        }
    }

    QAccessibleInterface* nextUntried(const AccessibleTree& tree) {
        for (QAccessibleInterface* node : tree.nodes()) {
            auto* item = qobject_cast<QQuickItem*>(node->object());
            if (!item || !item->inherits("QQuickAbstractButton") || !item->isEnabled())
                continue;
            bool skip = m_tried.contains(triedKey(node));
            for (const QString& prefix : skipped)
                skip = skip || item->objectName().startsWith(prefix);
            if (!skip)
                return node;
        }
        return nullptr;
    }

    void press(QAccessibleInterface* node) {
        const QString key = keyOf(node);
        m_tried.insert(triedKey(node));
        QAccessibleActionInterface* actions = node->actionInterface();
        if (!actions ||
            !actions->actionNames().contains(QAccessibleActionInterface::pressAction())) {
            fail(QStringLiteral("no press action: ") + key);
            return;
        }
        QQuickItem* item = qobject_cast<QQuickItem*>(node->object());
        QSignalSpy clicked(item, SIGNAL(clicked()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        if (clicked.isEmpty())
            fail(QStringLiteral("pressing does nothing: ") + key);
        m_ui.settle(m_window);
        m_ui.advance(1000);
    }

    UiHarness& m_ui;
    QQuickWindow* m_window;
    QSet<QString> m_tried;
};

class AccessibleTreeTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { QAccessible::setActive(true); }

    static std::string report(const QStringList& failures) {
        return QString::number(failures.size()).toStdString() + " faults:\n" +
               failures.join(QLatin1Char('\n')).toStdString();
    }

    static QList<StudySession> someHistory() {
        QList<StudySession> out;
        for (int day = 1; day <= 6; ++day) {
            StudySession s = sessionAt(QDateTime(QDate(2026, 3, day), QTime(9, 0), Qt::LocalTime),
                                       (20 + 5 * day) * 60, QStringLiteral("写作第%1章").arg(day));
            s.focusRating = 1 + day % 5;
            out << s;
        }
        return out;
    }

    // Presses a control through its accessible action, as a screen reader does.
    static void pressThrough(UiHarness& ui, QQuickItem* item) {
        QAccessibleInterface* node = item ? QAccessible::queryAccessibleInterface(item) : nullptr;
        ASSERT_TRUE(node && node->actionInterface());
        node->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        ui.settle();
    }

    static void pressSection(UiHarness& ui, const QString& key) {
        pressThrough(ui, ui.item(QStringLiteral("sidebar.section.") + key));
        EXPECT_TRUE(ui.isShown(key + QStringLiteral("Screen")))
            << "pressing the sidebar row " << key.toStdString() << " did not show its screen";
    }
};

TEST_F(AccessibleTreeTest, EveryScreenReadsAndPressesLikeItIsSeenAndClicked) {
    QStringList failures;
    // Each start is crawled in a window of its own: a press that starts a round locks what
    // the idle screen offers, so the idle screen is also crawled without its start button.
    const auto crawlFrom = [&](const std::function<void(UiHarness&)>& start,
                               QSet<QString> skipped) {
        UiHarness ui(seedSessions(someHistory()));
        start(ui);
        Crawl crawl(ui);
        crawl.skipped = skipped << QStringLiteral("sidebar.section.");
        crawl.run();
        for (const QString& f : std::as_const(crawl.failures))
            if (!failures.contains(f))
                failures << f;
    };
    for (const char* section : {"insights", "history", "settings"})
        crawlFrom([&](UiHarness& ui) { pressSection(ui, QString::fromLatin1(section)); }, {});
    crawlFrom([](UiHarness&) {}, {});
    crawlFrom([](UiHarness&) {}, {QStringLiteral("focus.primary")});
    crawlFrom(
        [](UiHarness& ui) {
            ui.store().startSession();
            ui.advance(120'000);
            ui.store().endSessionForReview();
            ui.settle();
        },
        {});
    EXPECT_TRUE(failures.isEmpty()) << report(failures);
}

// The windows beside the main one: the tray panel and the floating timer of a round the
// main window was closed on.
TEST_F(AccessibleTreeTest, TheSmallWindowsReadAndPressLikeTheyAreSeenAndClicked) {
    QStringList failures;
    {
        UiHarness ui(seedSessions(someHistory()));
        QMetaObject::invokeMethod(ui.trayIcon(), "activate");
        ui.settle();
        ASSERT_TRUE(ui.trayPanel() && ui.trayPanel()->isVisible());
        Crawl crawl(ui, ui.trayPanel());
        crawl.run();
        failures << crawl.failures;
    }
    UiHarness ui;
    ui.store().editSettings([](AppSettings& settings) { settings.floatingSignalButtons = true; });
    ui.store().startSession();
    ui.window()->hide();
    ui.settle();
    const auto* floating =
        ui.window()->findChild<FloatingTimerController*>(QStringLiteral("floatingTimerController"));
    QQuickWindow* panel = floating ? floating->panel() : nullptr;
    ASSERT_TRUE(panel && panel->isVisible());
    Crawl crawl(ui, panel);
    crawl.skipped = {QStringLiteral("floatingTimer.restore")}; // closes the window: pressed last
    crawl.run();
    failures << crawl.failures;
    EXPECT_EQ(ui.store().currentEventCount(), 4) << "wander, fatigue, pause, resume";
    pressThrough(ui, ui.item(QStringLiteral("floatingTimer.restore"), panel));
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_TRUE(failures.isEmpty()) << report(failures);
}

// A reader's highlight and magnifier take extents in screen pixels, whatever Qt's scale
// (run here at 1 and again at 2).
TEST_F(AccessibleTreeTest, ExtentsAreInScreenPixels) {
    UiHarness ui;
    const qreal scale = ui.window()->devicePixelRatio();
    const QRect window = QAccessible::queryAccessibleInterface(ui.window())->rect();
    EXPECT_EQ(window.size(), ui.window()->size() * scale);
    for (const char* name : {"focus.primary", "sidebar.section.settings"}) {
        QQuickItem* item = ui.item(QString::fromLatin1(name));
        QAccessibleInterface* node = QAccessible::queryAccessibleInterface(item);
        const QRect rect = node->rect();
        EXPECT_FALSE(node->state().offscreen) << name;
        const QPointF offset = item->mapToScene({0, 0}) * scale;
        EXPECT_NEAR(rect.x() - window.x(), offset.x(), scale) << name;
        EXPECT_NEAR(rect.y() - window.y(), offset.y(), scale) << name;
        EXPECT_EQ(rect.size(), (item->size() * scale).toSize()) << name;
    }
}

} // namespace
