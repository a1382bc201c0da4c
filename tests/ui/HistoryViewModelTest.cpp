#include "ui/viewmodels/HistoryViewModel.h"
#include "InsightScreensFixture.h"
#include "ui/viewmodels/SessionListModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace quill::test {
namespace {

class HistoryViewModelTest : public InsightScreensTest {
protected:
    std::unique_ptr<HistoryViewModel> vm;

    void show(const QList<StudySession>& sessions) {
        vm.reset();
        startWith(sessions);
        vm = std::make_unique<HistoryViewModel>(*store);
    }
    QString role(int row, SessionListModel::Role r) const {
        SessionListModel* list = vm->sessions();
        return list->data(list->index(row), r).toString();
    }
    QStringList ids() const {
        QStringList out;
        for (const StudySession& s : store->sessions())
            out << s.id.toString();
        return out;
    }
};

TEST_F(HistoryViewModelTest, TotalsRoundEachSessionAndAverageLikePrintf) {
    show({});
    EXPECT_TRUE(vm->empty());
    EXPECT_EQ(vm->averageFocusText(), "0.0");

    // 89 s counts 1 minute, 29 s none; ratings 3, 3, 3, 4 average exactly 3.25 → "3.2".
    show({session(today(12), 89, std::nullopt, 3), session(today(11), 29, std::nullopt, 3),
          session(today(10), 1500, std::nullopt, 3), session(today(9), 90, std::nullopt, 4)});
    EXPECT_FALSE(vm->empty());
    EXPECT_EQ(vm->countText(), "4");
    EXPECT_EQ(vm->minutesText(), "28"); // 1 + 0 + 25 + 2
    EXPECT_EQ(vm->averageFocusText(), "3.2");
    EXPECT_EQ(role(0, SessionListModel::TitleRole), "1 分钟专注");
    EXPECT_EQ(role(1, SessionListModel::TitleRole), "0 分钟专注");
}

TEST_F(HistoryViewModelTest, ACardShowsEveryFigureOfItsSession) {
    StudySession noted = session(QDateTime(QDate(2025, 11, 7), QTime(7, 5), Qt::LocalTime), 1500,
                                 QStringLiteral("  写作  "));
    noted.note = QStringLiteral("顺利");
    noted.completed = false;
    noted.startEnergy = 2;
    noted.endEnergy = 5;
    noted.reminderMinimumMinutes = 4;
    noted.reminderMaximumMinutes = 9;
    noted.events.append(
        FocusEvent{QUuid::createUuid(), noted.startedAt, 60, FocusEventKind::mindWander});
    show({session(today(9)), noted});

    EXPECT_EQ(role(1, SessionListModel::DayRole), "07");
    EXPECT_EQ(role(1, SessionListModel::MonthRole), "11月");
    EXPECT_EQ(role(1, SessionListModel::TimeRole), "07:05");
    EXPECT_EQ(role(1, SessionListModel::TaskRole), "写作");
    EXPECT_EQ(role(1, SessionListModel::StatusRole), "提前结束");
    EXPECT_EQ(role(1, SessionListModel::RatingRole), "4/5");
    EXPECT_EQ(role(1, SessionListModel::WanderRole), "1");
    EXPECT_EQ(role(1, SessionListModel::EnergyRole), "2→5");
    EXPECT_EQ(role(1, SessionListModel::ReminderRole), "4–9");
    EXPECT_EQ(role(1, SessionListModel::NoteRole), "顺利");

    EXPECT_EQ(role(0, SessionListModel::TaskRole), "未分类");
    EXPECT_EQ(role(0, SessionListModel::UncategorizedRole), "true");
    EXPECT_EQ(role(0, SessionListModel::StatusRole), "已完成");
    EXPECT_EQ(role(0, SessionListModel::NoteRole), "没有写本轮备注");
    EXPECT_EQ(role(0, SessionListModel::NoteEmptyRole), "true");
}

TEST_F(HistoryViewModelTest, TheListChangesByRowWhenOneSessionComesOrGoes) {
    const QList<StudySession> three{session(today(12)), session(today(11)), session(today(10))};
    SessionListModel list;
    QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    list.setSessions(three);
    QSignalSpy resets(&list, &QAbstractItemModel::modelReset);
    QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&list, &QAbstractItemModel::rowsRemoved);
    QSignalSpy edited(&list, &QAbstractItemModel::dataChanged);

    QList<StudySession> shown = three;
    shown.prepend(session(today(13)));
    list.setSessions(shown);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 0);

    for (int gone : {2, 2, 0}) { // one in the middle, the last, the first
        shown.removeAt(gone);
        list.setSessions(shown);
        ASSERT_EQ(removed.count(), 1) << gone;
        EXPECT_EQ(removed[0][1].toInt(), gone);
        removed.clear();
    }
    ASSERT_EQ(list.rowCount(), 1);

    shown[0].note = QStringLiteral("改了");
    list.setSessions(shown);
    EXPECT_EQ(edited.count(), 1);
    EXPECT_EQ(resets.count(), 0);

    list.setSessions(three); // unrelated lists are shown afresh
    EXPECT_EQ(resets.count(), 1);
    EXPECT_EQ(list.rowCount(), 3);
}

// Asking and cancelling go through the screen's own test; here the race it cannot stage.
TEST_F(HistoryViewModelTest, TheSessionAskedAboutIsDeletedEvenIfAnotherGoesMeanwhile) {
    show({session(today(12)), session(today(11)), session(today(10))});
    const QStringList before = ids();
    vm->requestDelete(1);
    store->removeSession(store->sessions().first());
    vm->confirmDelete();
    EXPECT_FALSE(vm->confirmingDelete());
    EXPECT_EQ(ids(), (QStringList{before[2]}));
    vm->requestDelete(5); // nothing there to ask about
    EXPECT_FALSE(vm->confirmingDelete());
}

// Cancelling is the screen test's; here the file that was written.
TEST_F(HistoryViewModelTest, AnExportThatWritesSaysSo) {
    show({session(today(12))});
    fakes.files->answer = fakes.data->directory() + QStringLiteral("/out.csv");
    vm->exportCsv();
    EXPECT_EQ(store->toastMessageText(), "CSV 已导出。");
}

} // namespace
} // namespace quill::test
