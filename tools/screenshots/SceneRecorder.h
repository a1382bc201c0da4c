#pragma once

#include "model/SettingsEnums.h"

#include <QString>
#include <QStringList>
#include <functional>

class QQuickWindow;

namespace quill::test {
class UiHarness;
}

namespace quill::screenshots {

/// Builds a fresh window per picture from the demo history, lets a scene drive it into its
/// state, and writes "<appearance>-<scene>.png" into the output folder.
class SceneRecorder {
public:
    /// Drives the window; returns the window to photograph (null for the main window).
    using Scene = std::function<QQuickWindow*(test::UiHarness&)>;

    explicit SceneRecorder(QString outputDir) : m_outputDir(std::move(outputDir)) {}

    /// False (with a message) when the picture could not be written.
    bool record(AppearanceMode appearance, const QString& name, const Scene& scene);
    const QStringList& written() const { return m_written; }

private:
    QString m_outputDir;
    QStringList m_written;
};

} // namespace quill::screenshots
