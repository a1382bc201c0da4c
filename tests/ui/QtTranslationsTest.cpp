#include "ui/shell/QtTranslations.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;

namespace {

TEST(QtTranslationsTest, QtsOwnTextsComeInChineseWhenInstalled) {
    QTemporaryDir empty;
    EXPECT_FALSE(installQtTranslations(empty.path()));
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel");

    const QString dir = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!QFile::exists(dir + "/qtbase_zh_CN.qm"))
        GTEST_SKIP() << "qt6-translations-l10n is not installed";
    EXPECT_TRUE(installQtTranslations());
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "取消");
}

} // namespace
