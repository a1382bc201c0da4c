#include "SceneRecorder.h"

#include "DemoHistory.h"
#include "storage/Persistence.h"
#include "ui/UiHarness.h"

#include <QDir>
#include <QImage>
#include <QQuickWindow>
#include <cstdio>

namespace quill::screenshots {

bool SceneRecorder::record(AppearanceMode appearance, const QString& name, const Scene& scene) {
    test::UiHarness ui([appearance](test::FakeServices& f) {
        Persistence::save(f.data->directory(), demoSettings(appearance),
                          demoSessions(f.clock->now()));
    });
    if (!ui.window()) {
        std::fprintf(stderr, "The main window did not load for %s.\n", qPrintable(name));
        return false;
    }
    QQuickWindow* target = scene(ui);
    if (!target)
        target = ui.window();
    ui.settle(target);
    const QImage image = target->grabWindow();
    const QString file =
        QDir(m_outputDir).filePath(QStringLiteral("%1-%2.png").arg(rawValue(appearance), name));
    if (image.isNull() || !image.save(file)) {
        std::fprintf(stderr, "Could not write %s.\n", qPrintable(file));
        return false;
    }
    m_written << file;
    return true;
}

} // namespace quill::screenshots
