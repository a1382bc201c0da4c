#pragma once

#include "SceneRecorder.h"

#include <QList>
#include <QPair>

namespace quill::screenshots {

/// The insights and history screens with the demo history, without any, with more tasks
/// than the table shows and long texts, and the delete confirmation.
QList<QPair<QString, SceneRecorder::Scene>> insightScenes();

} // namespace quill::screenshots
