#pragma once

#include "storage/FileChooser.h"
#include "store/AmbientOutput.h"
#include "store/Clock.h"
#include "store/DataLocation.h"
#include "store/FolderWatcher.h"
#include "store/MusicPlayer.h"
#include "store/RandomSource.h"
#include "store/Scheduler.h"
#include "store/SoundPlayer.h"
#include "store/WorkQueue.h"
#include "store/focusguard/NotificationHold.h"
#include "store/focusguard/ScreenLockWatch.h"

#include <memory>

namespace quill {

/// Everything the store asks of the outside world, handed over at construction.
struct Services {
    std::shared_ptr<Clock> clock;
    std::shared_ptr<Scheduler> scheduler;
    std::shared_ptr<RandomSource> random;
    std::shared_ptr<DataLocation> dataLocation;
    std::shared_ptr<FileChooser> fileChooser;
    std::shared_ptr<SoundPlayer> sounds;
    std::shared_ptr<AmbientOutput> ambient;
    std::shared_ptr<MusicPlayer> music;
    /// Where the data file is serialised and written; a worker thread when not given.
    std::shared_ptr<WorkQueue> work;
    /// Tells when another writer changed the data file; nothing is watched when not given.
    std::shared_ptr<FolderWatcher> folderWatcher;
    /// The desktop's notification banners, held while focusing; none: never held.
    std::shared_ptr<NotificationHold> notificationHold;
    /// Screen locks, which pause a running round; none: locks go unnoticed.
    std::shared_ptr<ScreenLockWatch> screenLock;
};

} // namespace quill
