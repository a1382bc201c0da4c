#include "storage/Persistence.h"
#include "StorageSamples.h"
#include "storage/DataFileCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace quill {
namespace {

using test::plainSession;
using test::utc;
using test::WarningCatcher;

class PersistenceTest : public ::testing::Test {
protected:
    QTemporaryDir root;
    QString directory() const { return root.path() + QStringLiteral("/share/Quillmere"); }
    QString dataFile() const { return directory() + QStringLiteral("/focus-data.json"); }

    QByteArray readFile(const QString& path) const {
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << path.toStdString();
        return f.readAll();
    }
    void writeFile(const QString& path, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    static QList<StudySession> someSessions() {
        StudySession a =
            plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", utc(2026, 3, 5, 8, 30));
        a.taskName = QStringLiteral("写作");
        StudySession b =
            plainSession("F0E1D2C3-B4A5-9687-7869-5A4B3C2D1E0F", utc(2026, 3, 6, 8, 30));
        return {a, b};
    }
};

TEST_F(PersistenceTest, SaveCreatesOrReplacesTheWholeFileItLoadsBackAndRecreatesWhatWentMissing) {
    AppSettings settings;
    settings.selectedDurationMinutes = 35;
    ASSERT_TRUE(Persistence::save(directory(), settings, someSessions()));
    EXPECT_EQ(readFile(dataFile()), DataFileCodec::encode(settings, someSessions()));
    const Persistence::LoadResult loaded = Persistence::load(directory());
    EXPECT_FALSE(loaded.unreadableFileExists);
    EXPECT_EQ(loaded.data.settings, settings);
    EXPECT_EQ(loaded.data.sessions, someSessions()); // file order; the store sorts
    EXPECT_EQ(QDir(directory()).entryList(QDir::Files), QStringList{"focus-data.json"});

    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, {}));
    EXPECT_EQ(readFile(dataFile()), DataFileCodec::encode(AppSettings{}, {}));
    ASSERT_TRUE(QFile::remove(dataFile()));
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
    EXPECT_TRUE(QFile::exists(dataFile()));
    ASSERT_TRUE(QDir(root.path() + QStringLiteral("/share")).removeRecursively());
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
    EXPECT_EQ(readFile(dataFile()), DataFileCodec::encode(AppSettings{}, someSessions()));
}

// Loading failures are silent: a missing file or location, and an undecodable file (torn or
// empty), which is marked for keeping.
TEST_F(PersistenceTest, MissingOrUndecodableFilesLoadDefaultsSilently) {
    WarningCatcher catcher;
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("{\"sessions\":[],\"sett"), QByteArray("")}) {
        if (!bytes.isNull())
            writeFile(dataFile(), bytes);
        for (const QString& dir : {directory(), QString()}) {
            const Persistence::LoadResult loaded = Persistence::load(dir);
            EXPECT_EQ(loaded.data.settings, AppSettings{});
            EXPECT_TRUE(loaded.data.sessions.isEmpty());
            EXPECT_EQ(loaded.unreadableFileExists, !bytes.isNull() && !dir.isEmpty());
        }
    }
    EXPECT_EQ(catcher.warnings, QStringList{});
}

TEST_F(PersistenceTest, TextSurvivesSaveAndLoadUnchanged) {
    QString controls = QChar(0x7f);
    for (char16_t c = 1; c < 0x20; ++c)
        controls += QChar(c);
    const QStringList texts = {
        QStringLiteral("\uFEFF👨‍👩‍👧 专注 🇨🇳 😀"), // a leading byte order
                                                                         // mark is text too
        QStringLiteral("e\u0301 a\u0308 \u1100\u1161\u11a8 Zalgo: z\u0336\u0317\u0353"),
        QStringLiteral("שלום עולם مرحبا \u200f\u202e RTL"),
        QStringLiteral("a, \"quoted\", 'single'\nsecond line\r\nthird\\back/slash"), controls,
        QStringLiteral("\u2028\u2029\ufeff\uffff"), QString(10000, QChar(u'长')),
        QStringLiteral("x").repeated(5000) + QStringLiteral("😀").repeated(2500)};
    AppSettings settings;
    settings.taskNames = texts;
    settings.playlistName = texts.join(QStringLiteral("|"));
    settings.ambientVolumes = std::map<QString, double>{{texts[0], 0.5}, {texts[2], 0.25}};
    QList<StudySession> sessions;
    for (const QString& text : texts) {
        StudySession s =
            plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", utc(2026, 3, 5, 8, 30));
        s.taskName = text;
        s.note = text;
        sessions << s;
    }
    ASSERT_TRUE(Persistence::save(directory(), settings, sessions));
    const QByteArray bytes = readFile(dataFile());
    EXPECT_TRUE(bytes.contains("专注")) << "non-ASCII text is written as UTF-8, not escaped";
    EXPECT_FALSE(bytes.startsWith("\xef\xbb\xbf"));
    const Persistence::LoadResult loaded = Persistence::load(directory());
    ASSERT_FALSE(loaded.unreadableFileExists);
    EXPECT_EQ(loaded.data.settings, settings);
    EXPECT_EQ(loaded.data.sessions, sessions);
}

// ---------------------------------------------------------------- failures

TEST_F(PersistenceTest, AnUnwritableLocationFailsWithOneWarningAndChangesNothing) {
    const QString file = root.path() + QStringLiteral("/plain-file");
    writeFile(file, "x");
    ASSERT_TRUE(QDir().mkpath(dataFile())); // the data file's own path is a folder
    // Permission bits do not stop root; a kernel file system refuses everyone.
    for (const QString& dir : {file, file + QStringLiteral("/Quillmere"), directory(),
                               QStringLiteral("/proc/quillmere-test/Quillmere"),
                               QStringLiteral("/proc/self/Quillmere"), QString()}) {
        SCOPED_TRACE(dir.toStdString());
        WarningCatcher catcher;
        EXPECT_FALSE(Persistence::save(dir, AppSettings{}, someSessions()));
        ASSERT_EQ(catcher.warnings.size(), 1) << catcher.warnings.join('\n').toStdString();
        EXPECT_TRUE(catcher.warnings.first().startsWith(QStringLiteral("Quillmere save failed: ")));
    }
    EXPECT_EQ(readFile(file), "x");
    EXPECT_TRUE(QFileInfo(dataFile()).isDir());
    // No temporary file is left behind beside it.
    EXPECT_EQ(QDir(directory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              QStringList{"focus-data.json"});
}

TEST_F(PersistenceTest, FailedSaveLeavesTheOldFileAsItWas) {
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
    const QByteArray before = readFile(dataFile());
    // A folder where the temporary file would go cannot stop the write, but a file replacing
    // the folder itself does: the old content must stay readable elsewhere.
    ASSERT_TRUE(QFile::rename(directory(), directory() + QStringLiteral(".moved")));
    writeFile(directory(), "not a folder");
    WarningCatcher catcher;
    EXPECT_FALSE(Persistence::save(directory(), AppSettings{}, {}));
    EXPECT_EQ(catcher.warnings.size(), 1);
    EXPECT_EQ(readFile(directory() + QStringLiteral(".moved/focus-data.json")), before);
}

TEST_F(PersistenceTest, StartUpRemovesOnlyTheTemporariesOfInterruptedWrites) {
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
    const QStringList stale = {"focus-data.json.quillmere-save-AbC123",
                               "focus-data.json.quillmere-save-xYzQwE"};
    // The user's own files, however much they look like a temporary.
    const QStringList kept = {"focus-data.json",
                              "focus-data.json.unreadable-20260305T083000Z",
                              "focus-data.json.backup",
                              "focus-data.json.bak001",
                              "focus-data.json.AbC123",
                              "focus-data.json.quillmere-save-AbC12",
                              "focus-data.json.quillmere-save-Ab-123",
                              "other.json.quillmere-save-AbC123",
                              "notes.txt"};
    for (const QString& name : stale + kept.mid(1))
        writeFile(directory() + '/' + name, "x");
    ASSERT_TRUE(
        QDir().mkpath(directory() + QStringLiteral("/focus-data.json.quillmere-save-QWERTY")));
    EXPECT_EQ(Persistence::removeStaleTemporaries(directory()), 2);
    QStringList left = QDir(directory()).entryList(QDir::Files | QDir::Hidden);
    QStringList expected = kept;
    left.sort();
    expected.sort();
    EXPECT_EQ(left, expected);
    EXPECT_TRUE(
        QFileInfo(directory() + QStringLiteral("/focus-data.json.quillmere-save-QWERTY")).isDir());
    EXPECT_EQ(Persistence::removeStaleTemporaries(QString()), 0);
}

TEST_F(PersistenceTest, TheFolderAndTheFileArePrivateAndOlderOnesAreTightened) {
    const auto mode = [](const QString& path) {
        struct stat info {};
        EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0) << path.toStdString();
        return info.st_mode & 07777;
    };
    const mode_t oldMask = ::umask(022);
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
    EXPECT_EQ(mode(directory()), 0700u);
    EXPECT_EQ(mode(dataFile()), 0600u);

    // Left open to others by an earlier version: closed at the next save.
    ASSERT_EQ(::chmod(QFile::encodeName(directory()).constData(), 0755), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(dataFile()).constData(), 0644), 0);
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, {}));
    EXPECT_EQ(mode(directory()), 0700u);
    EXPECT_EQ(mode(dataFile()), 0600u);
    ::umask(oldMask);
}

TEST_F(PersistenceTest, AnythingButARegularFileOfSaneSizeIsSetAsideUnread) {
    // Each would hang, exhaust memory or take seconds if read: none of it is.
    const QString fifo = root.filePath(QStringLiteral("fifo"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString huge = root.filePath(QStringLiteral("huge"));
    {
        QFile sparse(huge);
        ASSERT_TRUE(sparse.open(QIODevice::WriteOnly));
        ASSERT_TRUE(sparse.resize(qint64(513) * 1024 * 1024)); // sparse: no disk used
    }
    ASSERT_TRUE(QDir().mkpath(root.filePath(QStringLiteral("folder"))));
    const QStringList targets = {fifo, QStringLiteral("/dev/zero"), QStringLiteral("/dev/urandom"),
                                 huge, root.filePath(QStringLiteral("folder"))};
    const QDateTime now = utc(2026, 3, 5, 8, 30);
    for (const QString& target : targets) {
        SCOPED_TRACE(target.toStdString());
        QDir(directory()).removeRecursively();
        ASSERT_TRUE(QDir().mkpath(directory()));
        // Links at the data path, and the thing itself moved there.
        ASSERT_TRUE(QFile::link(target, dataFile()));
        const Persistence::LoadResult loaded = Persistence::load(directory());
        EXPECT_TRUE(loaded.unreadableFileExists);
        EXPECT_TRUE(loaded.data.sessions.isEmpty());
        ASSERT_TRUE(Persistence::preserveUnreadable(directory(), now));
        EXPECT_EQ(
            QFileInfo(dataFile() + QStringLiteral(".unreadable-20260305T083000Z")).symLinkTarget(),
            QFileInfo(target).absoluteFilePath())
            << "set aside as it was, never copied";
        ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, someSessions()));
        EXPECT_EQ(Persistence::load(directory()).data.sessions.size(), 2);
    }
    // The FIFO itself at the data path.
    QDir(directory()).removeRecursively();
    ASSERT_TRUE(QDir().mkpath(directory()));
    ASSERT_TRUE(QFile::rename(fifo, dataFile()));
    EXPECT_TRUE(Persistence::load(directory()).unreadableFileExists);
    ASSERT_TRUE(Persistence::preserveUnreadable(directory(), now));
    struct stat info {};
    ASSERT_EQ(::lstat(QFile::encodeName(dataFile() + QStringLiteral(".unreadable-20260305T083000Z"))
                          .constData(),
                      &info),
              0);
    EXPECT_TRUE(S_ISFIFO(info.st_mode));
}

TEST_F(PersistenceTest, ALinkToARegularFileIsReadAndWrittenWhereItPoints) {
    const QString elsewhere = root.filePath(QStringLiteral("sync/focus-data.json"));
    ASSERT_TRUE(Persistence::save(QFileInfo(elsewhere).path(), AppSettings{}, someSessions()));
    ASSERT_TRUE(QDir().mkpath(directory()));
    ASSERT_TRUE(QFile::link(elsewhere, dataFile()));
    EXPECT_EQ(Persistence::load(directory()).data.sessions.size(), 2);
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, {}));
    EXPECT_TRUE(QFileInfo(dataFile()).isSymLink());
    EXPECT_TRUE(Persistence::load(QFileInfo(elsewhere).path()).data.sessions.isEmpty());
}

// ---------------------------------------------------------------- the unreadable file

TEST_F(PersistenceTest, UnreadableFileIsRenamedBesideItWithAUtcStampAndNeverOverwritten) {
    WarningCatcher catcher;
    // Nothing to keep aside is no error.
    EXPECT_TRUE(Persistence::preserveUnreadable(directory(), utc(2026, 3, 5, 8, 30)));
    EXPECT_EQ(catcher.warnings, QStringList{});
    const QByteArray garbage = "{\"sessions\": [ torn";
    writeFile(dataFile(), garbage);
    ASSERT_TRUE(Persistence::load(directory()).unreadableFileExists);
    const QDateTime now(QDate(2026, 3, 5), QTime(16, 30, 7, 400),
                        QTimeZone(QByteArrayLiteral("Asia/Shanghai")));
    ASSERT_TRUE(Persistence::preserveUnreadable(directory(), now));
    EXPECT_FALSE(QFile::exists(dataFile()));
    const QString kept =
        directory() + QStringLiteral("/focus-data.json.unreadable-20260305T083007Z");
    EXPECT_EQ(readFile(kept), garbage);
    EXPECT_EQ(catcher.warnings.size(), 1);
    // Within the same second a second one is kept too, so the save can go ahead.
    writeFile(dataFile(), "second");
    EXPECT_TRUE(Persistence::preserveUnreadable(directory(), now));
    EXPECT_EQ(readFile(kept + QStringLiteral("-2")), "second");
    EXPECT_FALSE(QFile::exists(dataFile()));
    // The next save starts a fresh file and leaves the kept ones alone.
    ASSERT_TRUE(Persistence::save(directory(), AppSettings{}, {}));
    EXPECT_FALSE(Persistence::load(directory()).unreadableFileExists);
    EXPECT_EQ(readFile(kept), garbage);
}

} // namespace
} // namespace quill
