#include "ui/shell/AppIdentity.h"
#include "ui/shell/TrayIcon.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quill {
namespace {

// Icon lookup is process-wide, so one test walks from a bare build tree to an installed one.
TEST(TrayIconName, DrawnArtUntilInstalledThenTheInstalledIconsByName) {
    TrayIcon bare;
    EXPECT_TRUE(bare.icon().name().isEmpty());
    EXPECT_FALSE(bare.icon().pixmap(22).isNull()) << "the drawn art stands in";

    QTemporaryDir prefix;
    ASSERT_TRUE(prefix.isValid());
    const QString svg =
        QStringLiteral("<svg xmlns='http://www.w3.org/2000/svg' width='16' height='16'>"
                       "<circle cx='8' cy='8' r='6'/></svg>");
    for (const QString& name : {QStringLiteral("scalable/apps/%1.svg").arg(appId()),
                                QStringLiteral("symbolic/apps/%1-symbolic.svg").arg(appId())}) {
        const QString path = prefix.path() + QStringLiteral("/share/icons/hicolor/") + name;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(svg.toUtf8());
    }
    QDir(prefix.path()).mkpath(QStringLiteral("bin"));
    addInstalledIconPath(prefix.path() + QStringLiteral("/bin"));

    TrayIcon installed;
    EXPECT_EQ(installed.icon().name(), appId() + QStringLiteral("-symbolic"))
        << "idle: the monochrome icon, so the panel can tint it";
    installed.setSymbol(QStringLiteral("leaf.fill"));
    EXPECT_EQ(installed.icon().name(), appId()) << "during a round: the mint icon";
}

} // namespace
} // namespace quill
