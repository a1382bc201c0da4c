#include "audio/AmbientResources.h"
#include "model/AmbientSound.h"
#include "music/EventLoopWait.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

const QString kId = QStringLiteral(QUILL_APP_ID_NAME);

/// One staged install (DESTDIR, prefix /usr, stripped as the package is) for the suite.
class InstallTree : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        root = new QTemporaryDir;
        QProcess install;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DESTDIR"), root->path());
        install.setProcessEnvironment(env);
        install.setProcessChannelMode(QProcess::MergedChannels);
        install.start(QStringLiteral(QUILL_CMAKE),
                      {QStringLiteral("--install"), QStringLiteral(QUILL_BINARY_DIR),
                       QStringLiteral("--prefix"), QStringLiteral("/usr"),
                       QStringLiteral("--strip")});
        installed = install.waitForFinished(120000) && install.exitCode() == 0;
        log = QString::fromLocal8Bit(install.readAll());
    }
    static void TearDownTestSuite() {
        delete root;
        root = nullptr;
    }
    void SetUp() override { ASSERT_TRUE(installed) << log.toStdString(); }

    static QString usr(const QString& relative) {
        return root->path() + QStringLiteral("/usr/") + relative;
    }

    static inline QTemporaryDir* root = nullptr;
    static inline bool installed = false;
    static inline QString log;
};

TEST_F(InstallTree, EveryPieceLandsWhereDesktopsLookAndTheEntryPointsAtThem) {
    const QString desktop = usr(QStringLiteral("share/applications/%1.desktop").arg(kId));
    QSettings entry(desktop, QSettings::IniFormat);
    entry.beginGroup(QStringLiteral("Desktop Entry"));
    const QString exec = entry.value(QStringLiteral("Exec")).toString();
    const QString icon = entry.value(QStringLiteral("Icon")).toString();
    ASSERT_FALSE(exec.isEmpty()) << desktop.toStdString();
    EXPECT_TRUE(QFileInfo(usr(QStringLiteral("bin/") + exec)).isExecutable());
    EXPECT_EQ(icon, kId) << "one id for entry, icon and metainfo";
    EXPECT_TRUE(QFile::exists(usr(QStringLiteral("share/metainfo/%1.metainfo.xml").arg(kId))));

    const QString hicolor = usr(QStringLiteral("share/icons/hicolor/"));
    EXPECT_TRUE(QFile::exists(hicolor + QStringLiteral("scalable/apps/%1.svg").arg(icon)));
    EXPECT_TRUE(QFile::exists(hicolor + QStringLiteral("symbolic/apps/%1-symbolic.svg").arg(icon)));
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QString png = hicolor + QStringLiteral("%1x%1/apps/%2.png").arg(size).arg(icon);
        EXPECT_EQ(QImage(png).size(), QSize(size, size)) << png.toStdString();
    }

    const AmbientResources loops(usr(QStringLiteral("share/quillmere/Ambient")));
    for (AmbientSound sound : kAllAmbientSounds) {
        if (sound == AmbientSound::brownNoise)
            continue; // synthesised, no file
        EXPECT_FALSE(loops.locate(rawValue(sound)).isEmpty()) << rawValue(sound).toStdString();
    }

    EXPECT_TRUE(QFile::exists(usr(QStringLiteral("share/doc/quillmere/copyright"))));
    EXPECT_TRUE(QFile::exists(usr(QStringLiteral("share/doc/quillmere/changelog.gz"))));
    EXPECT_TRUE(QFile::exists(usr(QStringLiteral("share/man/man1/%1.1.gz").arg(exec))));
}

TEST_F(InstallTree, NoPathIntoTheSourceOrBuildTreeLeaks) {
    const QByteArray source = QByteArrayLiteral(QUILL_SOURCE_DIR);
    const QByteArray build = QByteArrayLiteral(QUILL_BINARY_DIR);
    int files = 0;
    QDirIterator it(root->path(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
#ifdef QUILL_EXECUTABLE_NAMES_SOURCES
        if (QFileInfo(file).isExecutable())
            continue;
#endif
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_FALSE(bytes.contains(source)) << file.fileName().toStdString();
        EXPECT_FALSE(bytes.contains(build)) << file.fileName().toStdString();
        ++files;
    }
    EXPECT_GT(files, 10);
}

TEST_F(InstallTree, TheInstalledAppFindsItsLoopsAndIconFromItsOwnPrefix) {
    // A throwaway home and no system data folders: whatever it finds, it found in the tree.
    QTemporaryDir home;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                             "XDG_RUNTIME_DIR", "TMPDIR"})
        env.insert(QString::fromLatin1(name), home.path());
    env.insert(QStringLiteral("XDG_DATA_DIRS"), home.path() + QStringLiteral("/nowhere"));
    env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
               QStringLiteral("unix:path=") + home.path() + QStringLiteral("/no-bus"));
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    env.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
    env.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("quillmere.ui.debug=true"));

    QProcess app;
    app.setProcessEnvironment(env);
    app.setProcessChannelMode(QProcess::MergedChannels);
    app.start(usr(QStringLiteral("bin/quillmere")), {});
    ASSERT_TRUE(app.waitForStarted());
    QString output;
    const QRegularExpression icon(QStringLiteral("Application icon: \"(\\S*)\""));
    const QRegularExpression loops(QStringLiteral("Ambient recordings: \"([^\"]*)\""));
    waitUntil(
        [&] {
            output += QString::fromLocal8Bit(app.readAll());
            return (icon.match(output).hasMatch() && loops.match(output).hasMatch()) ||
                   app.state() == QProcess::NotRunning;
        },
        60000); // a sanitizer build starts slowly; this only bounds a hang
    app.kill();
    app.waitForFinished();

    EXPECT_EQ(icon.match(output).captured(1), QStringLiteral("theme")) << output.toStdString();
    EXPECT_TRUE(loops.match(output).captured(1).startsWith(
        usr(QStringLiteral("share/quillmere/Ambient/rain."))))
        << output.toStdString();
}

} // namespace
} // namespace quill::test
