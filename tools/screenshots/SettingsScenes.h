#pragma once

#include "SceneRecorder.h"

#include <QList>
#include <QPair>

namespace quill::screenshots {

/// The settings screen (both music services, a playlist, the task list, the clear alert)
/// and the floating timer (its three sizes and a micro-break).
void addSettingsScenes(QList<QPair<QString, SceneRecorder::Scene>>& scenes);

} // namespace quill::screenshots
