#include "ui/shell/GracefulExit.h"

#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "support/FakeServices.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quill::test {
namespace {

// Each termination signal ending the app like quitting is the app process test's.
TEST(GracefulExit, AnExitFromBelowStillWritesTheLastSettingsChange) {
    // Qt calls exit() when the display goes away: the child does the same with a settings
    // change still waiting out its debounce, and the file must hold it.
    QTemporaryDir folder;
    const QString directory = folder.filePath(QStringLiteral("Quillmere"));
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        FakeServices fakes;
        fakes.data->setDirectory(directory);
        AppStore store(fakes.services());
        GracefulExit guard(&store);
        store.toggleAppearance();
        ::exit(3);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_EQ(Persistence::load(directory).data.settings.appearanceMode, AppearanceMode::light);
}

} // namespace
} // namespace quill::test
