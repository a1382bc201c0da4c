#include "ui/viewmodels/AmbientCardViewModel.h"
#include "ViewModelFixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class AmbientCardTest : public ViewModelTest {
protected:
    AmbientCardViewModel vm{*store};
    AmbientTileModel* tiles = vm.tiles();
    QVariant tile(int row, int role) const { return tiles->data(tiles->index(row), role); }
};

TEST_F(AmbientCardTest, TilesListTheCatalogueInOrder) {
    QAbstractItemModelTester tester(tiles, QAbstractItemModelTester::FailureReportingMode::Fatal);
    ASSERT_EQ(tiles->rowCount(), 8);
    EXPECT_EQ(tile(0, AmbientTileModel::RawRole), "rain");
    EXPECT_EQ(tile(0, AmbientTileModel::TitleRole), "雨声");
    EXPECT_EQ(tile(7, AmbientTileModel::RawRole), "brownNoise");
    EXPECT_EQ(tile(4, AmbientTileModel::TintRole), "coral");
    EXPECT_EQ(tile(6, AmbientTileModel::SymbolRole), "moon.stars.fill");
    EXPECT_FALSE(tile(8, AmbientTileModel::RawRole).isValid());
}

TEST_F(AmbientCardTest, AFailedStartLeavesTheCardStopped) {
    fakes.ambient->playResult = false;
    vm.toggleSound("rain");
    EXPECT_FALSE(vm.playing());
    EXPECT_EQ(vm.statusText(), "已选：雨声");
}

TEST_F(AmbientCardTest, VolumesShowTheDefaultUntilSetAndOnlyTheirRowChanges) {
    EXPECT_DOUBLE_EQ(tile(2, AmbientTileModel::VolumeRole).toDouble(), 0.7);
    QSignalSpy changed(tiles, &QAbstractItemModel::dataChanged);
    vm.setVolume("stream", 0.25);
    EXPECT_DOUBLE_EQ(tile(2, AmbientTileModel::VolumeRole).toDouble(), 0.25);
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.first().at(0).toModelIndex().row(), 2);
    EXPECT_EQ(store->settings().ambientVolume(AmbientSound::stream), 0.25);
}

TEST_F(AmbientCardTest, UnknownSoundsAndBadVolumesAreIgnored) {
    const AppSettings before = store->settings();
    vm.toggleSound("thunder");
    vm.setVolume("thunder", 0.5);
    vm.setVolume("rain", std::nan(""));
    EXPECT_EQ(store->settings(), before);
}

} // namespace
