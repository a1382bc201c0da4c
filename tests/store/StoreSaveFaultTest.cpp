// Saving into a broken environment with real files: a read-only folder, a read-only file, a
// full disk and a data folder that is a file. Nothing is lost, the user is told once, and
// the log carries the system's description.
#include "StoreHarness.h"

#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace quill::test {
namespace {

const QString kFailedPrefix = QStringLiteral("无法保存专注记录：");

/// A small tmpfs of its own, where root may mount one; unmounted when the test ends.
class SmallDisk {
public:
    explicit SmallDisk(const QString& mountPoint, const char* options) : m_path(mountPoint) {
        QDir().mkpath(m_path);
        m_mounted =
            geteuid() == 0 && ::mount("tmpfs", qPrintable(m_path), "tmpfs", 0, options) == 0;
    }
    ~SmallDisk() {
        if (m_mounted)
            ::umount2(qPrintable(m_path), MNT_DETACH);
    }
    bool mounted() const { return m_mounted; }
    bool remount(const char* options, unsigned long flags) {
        return ::mount("tmpfs", qPrintable(m_path), "tmpfs", MS_REMOUNT | flags, options) == 0;
    }

private:
    QString m_path;
    bool m_mounted = false;
};

class SaveFaultTest : public StoreTest {
protected:
    QTemporaryDir root;
    int failureToasts = 0;
    QString lastFailure;

    void TearDown() override { store.reset(); }

    void startStoreIn(const QString& folder) {
        fakes.data->setDirectory(folder);
        createStore();
        QObject::connect(store.get(), &AppStore::toastMessageChanged, [this] {
            if (store->toastMessageText().startsWith(kFailedPrefix)) {
                ++failureToasts;
                lastFailure = store->toastMessageText().mid(kFailedPrefix.size());
            }
        });
    }
    /// One change that leads to a save, and the step that delivers its outcome.
    void changeAndSettle() {
        store->toggleAppearance();
        advanceMs(300);
    }
    void seedFile(const QString& folder, int sessions) {
        QList<StudySession> list;
        for (int i = 0; i < sessions; ++i)
            list << sessionAt(now().addDays(-i - 1));
        QDir().mkpath(folder);
        ASSERT_TRUE(Persistence::save(folder, AppSettings{}, list));
    }
    int sessionsOnDisk(const QString& folder) const {
        return int(Persistence::load(folder).data.sessions.size());
    }
};

TEST_F(SaveFaultTest, AFullDiskIsShownOnceWithTheSystemsWordsUntilASaveSucceeds) {
    const QString mountPoint = root.path() + QStringLiteral("/disk");
    SmallDisk disk(mountPoint, "size=256k");
    const QString folder = mountPoint + QStringLiteral("/Quillmere");
    QString expected = QStringLiteral("No space left on device");
    seedFile(folder, 3);
    if (disk.mounted()) {
        QFile filler(mountPoint + QStringLiteral("/filler"));
        ASSERT_TRUE(filler.open(QIODevice::WriteOnly));
        while (filler.write(QByteArray(4096, 'x')) == 4096) {
        }
        filler.close();
    } else {
        // No tmpfs without root: a file-size limit refuses the write the same way.
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit{4096, RLIM_INFINITY};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        expected = QStringLiteral("File too large");
    }
    startStoreIn(folder);
    ASSERT_EQ(store->sessions().size(), 3);

    WarningCatcher warnings;
    store->removeSession(store->sessions().first());
    advanceMs(0);
    EXPECT_EQ(failureToasts, 1);
    EXPECT_EQ(lastFailure, expected);
    ASSERT_EQ(warnings.warnings.size(), 1);
    EXPECT_EQ(warnings.warnings.first(), QStringLiteral("Quillmere save failed: ") + expected);
    EXPECT_EQ(sessionsOnDisk(folder), 3) << "the old file is whole";
    EXPECT_EQ(store->sessions().size(), 2) << "memory keeps the change";

    changeAndSettle();
    changeAndSettle();
    EXPECT_EQ(failureToasts, 1) << "not shown again before a save has succeeded";
    EXPECT_EQ(warnings.warnings.size(), 3) << "but every failure is logged";

    if (disk.mounted()) {
        QFile::remove(mountPoint + QStringLiteral("/filler"));
    } else {
        rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    changeAndSettle();
    EXPECT_EQ(sessionsOnDisk(folder), 2) << "the next save writes everything";
    EXPECT_EQ(failureToasts, 1);

    // After a success, the next failure is news again.
    if (disk.mounted()) {
        ASSERT_TRUE(disk.remount("size=256k", MS_RDONLY));
        changeAndSettle();
        EXPECT_EQ(failureToasts, 2);
        EXPECT_EQ(lastFailure, QStringLiteral("Read-only file system"));
    }
}

TEST_F(SaveFaultTest, AReadOnlyFolderKeepsTheOldFileAndSaysSo) {
    const QString mountPoint = root.path() + QStringLiteral("/disk");
    SmallDisk disk(mountPoint, "size=1m");
    const QString folder = mountPoint + QStringLiteral("/Quillmere");
    seedFile(folder, 2);
    // Permission bits do not stop root, so as root the whole file system goes read-only.
    if (disk.mounted())
        ASSERT_TRUE(disk.remount("size=1m", MS_RDONLY));
    else
        ASSERT_TRUE(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    startStoreIn(folder);
    store->clearHistory();
    advanceMs(0);
    EXPECT_EQ(failureToasts, 1);
    EXPECT_FALSE(lastFailure.isEmpty());
    EXPECT_EQ(sessionsOnDisk(folder), 2);
    if (!disk.mounted())
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(SaveFaultTest, AReadOnlyFileIsReplacedAsAWholeWithoutComplaint) {
    const QString folder = root.path() + QStringLiteral("/Quillmere");
    seedFile(folder, 2);
    ASSERT_TRUE(QFile::setPermissions(Persistence::dataFilePath(folder), QFile::ReadOwner));
    startStoreIn(folder);
    store->removeSession(store->sessions().first());
    advanceMs(0);
    EXPECT_EQ(failureToasts, 0);
    EXPECT_EQ(sessionsOnDisk(folder), 1);
}

TEST_F(SaveFaultTest, ADataFolderThatIsAFileIsToldAndLeftAlone) {
    const QString folder = root.path() + QStringLiteral("/Quillmere");
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.write("mine");
    blocker.close();
    startStoreIn(folder);
    WarningCatcher warnings;
    changeAndSettle();
    EXPECT_EQ(lastFailure, QStringLiteral("Not a directory"));
    ASSERT_EQ(warnings.warnings.size(), 1);
    EXPECT_EQ(warnings.warnings.first(), QStringLiteral("Quillmere save failed: Not a directory"));
    ASSERT_TRUE(blocker.open(QIODevice::ReadOnly));
    EXPECT_EQ(blocker.readAll(), "mine");
}

} // namespace
} // namespace quill::test
