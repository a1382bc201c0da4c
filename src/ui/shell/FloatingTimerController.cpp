#include "FloatingTimerController.h"

#include "KWinWindowRule.h"
#include "MainWindowRestorer.h"
#include "MinimisedWatch.h"
#include "RoundedWindowMask.h"
#include "X11WindowHints.h"
#include "store/AppStore.h"
#include "ui/UiLog.h"
#include "ui/viewmodels/ViewModels.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRegion>
#include <QScreen>

namespace quill {

namespace {
const QUrl kPanelUrl(QStringLiteral("qrc:/qt/qml/Quillmere/FloatingTimerPanel.qml"));
} // namespace

FloatingTimerController::FloatingTimerController(ViewModels& models, QQmlEngine& engine,
                                                 QQuickWindow& mainWindow)
    : QObject(&mainWindow), m_models(models), m_store(models.store()), m_engine(engine),
      m_mainWindow(mainWindow) {
    setObjectName(QStringLiteral("floatingTimerController"));
    watchStore();
    watchMainWindow();
    update();
}

FloatingTimerController::~FloatingTimerController() {
    rememberPlace();
    delete m_panel.data();
}

void FloatingTimerController::setPlaceFile(const QString& path) {
    if (m_placeFile == path)
        return;
    m_placeFile = path;
    m_place.reset();
    Q_EMIT placeFileChanged();
}

FloatingTimerPlace& FloatingTimerController::place() {
    if (!m_place)
        m_place = std::make_unique<FloatingTimerPlace>(
            m_placeFile.isEmpty() ? FloatingTimerPlace::defaultFilePath() : m_placeFile);
    return *m_place;
}

void FloatingTimerController::rememberPlace() {
    // A Wayland client neither knows nor sets where its windows are.
    if (m_panel && QGuiApplication::platformName() != QLatin1String("wayland"))
        place().remember(m_panel->position());
}

bool FloatingTimerController::wanted(bool mainMinimised, bool sessionActive,
                                     const AppSettings& settings) {
    return mainMinimised && sessionActive &&
           (settings.effectiveFloatingTimerOnMinimize() ||
            settings.effectiveFloatingSignalButtons());
}

void FloatingTimerController::watchStore() {
    connect(&m_store, &AppStore::phaseChanged, this, &FloatingTimerController::update);
    m_countdownSetting = m_store.settings().effectiveFloatingTimerOnMinimize();
    m_buttonsSetting = m_store.settings().effectiveFloatingSignalButtons();
    connect(&m_store, &AppStore::settingsChanged, this, [this] {
        const AppSettings& s = m_store.settings();
        const bool countdown = s.effectiveFloatingTimerOnMinimize();
        const bool buttons = s.effectiveFloatingSignalButtons();
        if (countdown == m_countdownSetting && buttons == m_buttonsSetting)
            return;
        m_countdownSetting = countdown;
        m_buttonsSetting = buttons;
        update();
    });
}

void FloatingTimerController::watchMainWindow() {
    MinimisedWatch* watch = MinimisedWatch::of(&m_mainWindow, m_store.scheduler());
    connect(watch, &MinimisedWatch::minimisedChanged, this, [this](bool minimised) {
        m_mainMinimised = minimised;
        update();
    });
    // A main window closed into the tray is out of sight as much as a minimised one.
    connect(&m_mainWindow, &QWindow::visibleChanged, this, &FloatingTimerController::update);
    m_mainMinimised = watch->isMinimised();
}

bool FloatingTimerController::mainOutOfSight() const {
    return m_mainMinimised || !m_mainWindow.isVisible();
}

void FloatingTimerController::update() {
    if (m_store.isSessionActive())
        component();
    if (wanted(mainOutOfSight(), m_store.isSessionActive(), m_store.settings()))
        open();
    else
        dismiss();
}

QQmlComponent* FloatingTimerController::component() {
    if (!m_component)
        m_component = new QQmlComponent(&m_engine, kPanelUrl, this);
    return m_component;
}

void FloatingTimerController::open() {
    if (m_panel)
        return;
    QQmlComponent* component = this->component();
    m_composited = x11::compositorRunning();
    QObject* built = component->createWithInitialProperties(
        {{QStringLiteral("models"), QVariant::fromValue(&m_models)},
         {QStringLiteral("controller"), QVariant::fromValue(this)}});
    auto* panel = qobject_cast<QQuickWindow*>(built);
    if (!panel) {
        qCWarning(lcUi) << "The floating timer could not be built:" << component->errorString();
        delete built;
        return;
    }
    m_panel = panel;
    QQmlEngine::setObjectOwnership(panel, QQmlEngine::CppOwnership);
    QSurfaceFormat format = panel->format();
    format.setAlphaBufferSize(8);
    panel->setFormat(format);
    QList<QRect> screens;
    if (QScreen* primary = QGuiApplication::primaryScreen())
        screens << primary->availableGeometry();
    for (QScreen* screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    panel->setPosition(place().position(panel->size(), screens));
    if (x11::isX11())
        panel->setFlags((panel->flags() & ~Qt::WindowType_Mask) | Qt::Window);
    panel->create();
    x11::markAsUtility(panel);
    x11::showOnAllWorkspaces(panel);
    // Without a compositor the window is the panel itself, its rounded corners cut by a mask.
    if (!m_composited) {
        auto applyMask = [panel] {
            panel->setMask(roundedWindowMask(panel->size(), panel->property("radius").toReal()));
        };
        applyMask();
        connect(panel, &QWindow::widthChanged, panel, applyMask);
        connect(panel, &QWindow::heightChanged, panel, applyMask);
    }
    if (MinimisedWatch::platformHidesMinimising()) {
        // Plasma lets a Wayland client keep nothing above; KWin's scripting can.
        if (!m_kwinRule)
            m_kwinRule = std::make_unique<KWinWindowRule>(
                QDBusConnection::sessionBus(), panel->title(), QStringLiteral("floating-timer"));
        m_kwinRule->apply();
    }
    panel->show();
    x11::showOnAllWorkspaces(panel);
    Q_EMIT panelChanged();
}

void FloatingTimerController::dismiss() {
    if (!m_panel)
        return;
    rememberPlace();
    QQuickWindow* panel = m_panel;
    m_panel.clear();
    panel->hide();
    // A button inside the panel may be what closed it: delete once its click has returned.
    panel->deleteLater();
    Q_EMIT panelChanged();
}

void FloatingTimerController::restoreMainWindow() {
    restoreWindow(&m_mainWindow);
    dismiss();
}

void FloatingTimerController::startMove() {
    if (m_panel)
        m_panel->startSystemMove();
}

} // namespace quill
