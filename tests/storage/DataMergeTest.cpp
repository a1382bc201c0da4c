// Two copies of the data file changed apart (a sync folder, a second computer) end up the
// same, and nothing either side wrote is lost.
#include "storage/DataMerge.h"
#include "StorageSamples.h"
#include "storage/DataFileCodec.h"
#include "storage/DataFileSync.h"

#include <QSet>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace quill {
namespace {

using test::plainSession;
using test::utc;

QSet<QUuid> idsOf(const QList<StudySession>& sessions) {
    QSet<QUuid> ids;
    for (const StudySession& s : sessions)
        ids.insert(s.id);
    return ids;
}

// The data file kept in memory; each write is a new version, as an atomic replace is.
class MemoryFile final : public DataFileAccess {
public:
    QByteArray bytes = DataFileCodec::encode(PersistedData{});
    quint64 version = 1;
    QList<QByteArray> keptAside;
    QList<QByteArray> versions; ///< every version a copy wrote

    FileStamp stamp(const QString&) override { return FileStamp{true, 0, version, 0, 0}; }
    Persistence::LoadResult load(const QString& directory) override {
        Persistence::LoadResult result;
        result.stamp = stamp(directory);
        if (auto decoded = DataFileCodec::decode(bytes))
            result.data = *decoded;
        else
            result.unreadableFileExists = true;
        return result;
    }
    bool setAside(const QString&, const QDateTime&, QString*) override {
        keptAside << bytes;
        return true;
    }
    bool save(const QString& directory, const PersistedData& data, QString*,
              FileStamp* written) override {
        bytes = DataFileCodec::encode(data);
        versions << bytes;
        ++version;
        *written = stamp(directory);
        return true;
    }
};

// One copy of the app: the store's data, and its saver remembering the file. A merged result
// reaches the store later, after whatever the store did in between.
struct Copy {
    explicit Copy(std::shared_ptr<MemoryFile> file) : sync(PersistedData{}, file->stamp({}), file) {
        state.ledger.settingsChangedAt = QDateTime::fromSecsSinceEpoch(0, Qt::UTC); // as the store
    }
    PersistedData state;
    DataFileSync sync;
    int takenIn = 0;
    std::vector<DataFileSync::Result> pending;
};

class TwoCopies {
public:
    explicit TwoCopies(quint64 seed) : m_random(seed) {}

    void step() {
        m_now = m_now.addSecs(1 + pick(120)); // whole seconds apart: no two changes tie
        Copy& copy = m_copies[pick(2)];
        switch (pick(9)) {
        case 0:
        case 1:
            add(copy);
            break;
        case 2:
            remove(copy);
            break;
        case 3:
            if (pick(4) == 0)
                clear(copy);
            break;
        case 4:
            changeSettings(copy);
            break;
        case 5:
            keep(copy, copy.sync.save({}, copy.state, m_now, copy.takenIn));
            break;
        case 6:
            keep(copy, copy.sync.refresh({}, copy.state, m_now, copy.takenIn));
            break;
        case 7:
            takeIn(copy, pick(2) == 0);
            break;
        case 8:
            restoreOlderVersion();
            break;
        }
    }

    /// Both copies save and take in the results until the file stops changing.
    void settle() {
        for (int round = 0; round < 6; ++round) {
            const quint64 before = m_file->version;
            for (Copy& copy : m_copies) {
                takeIn(copy, true);
                keep(copy, copy.sync.save({}, copy.state, m_now, copy.takenIn));
                takeIn(copy, true);
            }
            if (m_file->version == before + 2 && round > 0)
                return;
        }
    }

    const Copy& copy(int i) const { return m_copies[i]; }
    PersistedData file() const { return *DataFileCodec::decode(m_file->bytes); }
    QSet<QUuid> added, deleted;
    AppSettings lastSettings;

private:
    int pick(int n) { return int(std::uniform_int_distribution<int>(0, n - 1)(m_random)); }

    void add(Copy& copy) {
        StudySession s = plainSession("00000000-0000-4000-8000-000000000000", m_now);
        QByteArray raw(16, '\0');
        const quint64 halves[2] = {m_random(), m_random()};
        std::memcpy(raw.data(), halves, 16);
        s.id = QUuid::fromRfc4122(raw);
        s.note = QString::number(added.size());
        copy.state.sessions.prepend(s);
        added.insert(s.id);
    }
    void remove(Copy& copy) {
        if (copy.state.sessions.isEmpty())
            return;
        const QUuid id = copy.state.sessions.takeAt(pick(int(copy.state.sessions.size()))).id;
        copy.state.ledger.recordDeletion(id, m_now);
        deleted.insert(id);
    }
    void clear(Copy& copy) {
        for (const StudySession& s : copy.state.sessions) {
            copy.state.ledger.recordDeletion(s.id, m_now);
            deleted.insert(s.id);
        }
        copy.state.sessions.clear();
    }
    void changeSettings(Copy& copy) {
        copy.state.settings.playlistName = QString::number(m_random());
        copy.state.settings.selectedDurationMinutes = 1 + pick(90);
        copy.state.ledger.settingsChangedAt = SyncLedger::stamp(m_now);
        lastSettings = copy.state.settings;
    }
    // A sync tool resolving a conflict by keeping the other computer's older version.
    void restoreOlderVersion() {
        if (m_file->versions.isEmpty())
            return;
        m_file->bytes = m_file->versions.at(pick(int(m_file->versions.size())));
        ++m_file->version;
    }
    void keep(Copy& copy, DataFileSync::Result result) {
        if (result.merged)
            copy.pending.push_back(std::move(result));
    }
    // What the store does with a merged result handed back.
    void takeIn(Copy& copy, bool all) {
        while (!copy.pending.empty()) {
            const DataFileSync::Result r = copy.pending.front();
            copy.pending.erase(copy.pending.begin());
            copy.state = DataMerge::adopt(*r.sent, copy.state, *r.merged, m_now);
            copy.takenIn = r.mergeNumber;
            if (!all)
                return;
        }
    }

    std::mt19937_64 m_random;
    QDateTime m_now = utc(2026, 11, 1, 8, 0);
    std::shared_ptr<MemoryFile> m_file = std::make_shared<MemoryFile>();
    Copy m_copies[2] = {Copy(m_file), Copy(m_file)};
};

TEST(DataMergeTest, AnyInterleavingOnTwoCopiesConvergesAndLosesNothing) {
    for (quint64 seed = 1; seed <= 400; ++seed) {
        SCOPED_TRACE(seed);
        TwoCopies run(seed);
        const int steps = 10 + int(seed % 50);
        for (int i = 0; i < steps; ++i)
            run.step();
        run.settle();

        const PersistedData file = run.file();
        for (int i = 0; i < 2; ++i) {
            ASSERT_EQ(run.copy(i).state.sessions, file.sessions) << "copy " << i;
            ASSERT_TRUE(run.copy(i).state.settings == file.settings) << "copy " << i;
            ASSERT_EQ(run.copy(i).state.ledger, file.ledger) << "copy " << i;
        }
        ASSERT_EQ(idsOf(file.sessions), run.added - run.deleted);
        ASSERT_EQ(QSet<QUuid>(file.ledger.deletedSessions.keyBegin(),
                              file.ledger.deletedSessions.keyEnd()),
                  run.deleted);
        ASSERT_TRUE(file.settings == run.lastSettings);
    }
}

class MergeCaseTest : public ::testing::Test {
protected:
    const QDateTime now = utc(2026, 11, 24, 12, 0);
    StudySession a = plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", utc(2026, 11, 1, 8, 0));
    StudySession b = plainSession("F0E1D2C3-B4A5-4687-8869-5A4B3C2D1E0F", utc(2026, 11, 2, 8, 0));
    StudySession c = plainSession("11111111-2222-4333-8444-555555555555", utc(2026, 11, 3, 8, 0));
};

TEST_F(MergeCaseTest, AWriterThatKeepsNoLedgerDeletesByLeavingSessionsOut) {
    const PersistedData base{{}, {b, a}, {}};
    // The other side removed `a` and added `c`; this side added nothing and still has both.
    const PersistedData theirs{{}, {c, b}, {}};
    const PersistedData merged = DataMerge::merge(base, base, theirs, now);
    EXPECT_EQ(merged.sessions, (QList<StudySession>{c, b}));
    EXPECT_EQ(merged.ledger.deletedSessions.keys(), QList<QUuid>{a.id});

    // A clear there: everything this side had seen in the file goes, what it added stays.
    const PersistedData ours{{}, {c, b, a}, {}};
    const PersistedData cleared = DataMerge::merge(base, ours, PersistedData{}, now);
    EXPECT_EQ(cleared.sessions, QList<StudySession>{c});
    EXPECT_EQ(cleared.ledger.deletedSessions.size(), 2);

    // A session only the app's data lacks is not a deletion: the app records its own.
    EXPECT_EQ(DataMerge::merge(base, PersistedData{}, base, now).sessions, base.sessions);
    // Nor one missing from a file another copy of the app wrote: it had not seen it yet.
    PersistedData seen = base;
    seen.ledger.revision = QUuid::createUuid();
    PersistedData offline{{}, {c, b}, {}};
    offline.ledger.revision = QUuid::createUuid();
    EXPECT_EQ(DataMerge::merge(seen, seen, offline, now).sessions, (QList<StudySession>{c, b, a}));
    // A script that carried the app's keys over unchanged still deletes by leaving out.
    PersistedData edited = seen;
    edited.sessions.removeAt(1);
    EXPECT_EQ(DataMerge::merge(seen, seen, edited, now).sessions, QList<StudySession>{b});
}

TEST_F(MergeCaseTest, SessionChangedOnOneSideKeepsThatChange) {
    StudySession edited = a;
    edited.note = QStringLiteral("补记");
    const PersistedData base{{}, {a}, {}};
    EXPECT_EQ(DataMerge::merge(base, base, {{}, {edited}, {}}, now).sessions.at(0).note,
              QStringLiteral("补记"));
    EXPECT_EQ(DataMerge::merge(base, {{}, {edited}, {}}, base, now).sessions.at(0).note,
              QStringLiteral("补记"));
}

TEST_F(MergeCaseTest, DeletionsAreForgottenAfterNinetyDays) {
    PersistedData ours{{}, {}, {}};
    ours.ledger.recordDeletion(a.id, now.addDays(-91));
    ours.ledger.recordDeletion(b.id, now.addDays(-89));
    const PersistedData merged = DataMerge::merge({}, ours, {}, now);
    EXPECT_EQ(merged.ledger.deletedSessions.keys(), QList<QUuid>{b.id});
}

TEST_F(MergeCaseTest, SettingsComeFromTheSideChangedLast) {
    PersistedData base;
    PersistedData ours = base, theirs = base;
    ours.settings.playlistName = QStringLiteral("ours");
    ours.ledger.settingsChangedAt = now.addSecs(-60);
    theirs.settings.playlistName = QStringLiteral("theirs");
    theirs.ledger.settingsChangedAt = now.addSecs(-30);
    EXPECT_EQ(DataMerge::merge(base, ours, theirs, now).settings.playlistName,
              QStringLiteral("theirs"));
    theirs.ledger.settingsChangedAt = now.addSecs(-90);
    EXPECT_EQ(DataMerge::merge(base, ours, theirs, now).settings.playlistName,
              QStringLiteral("ours"));
    // Changed there without a date (an older writer, a hand edit): as if just now.
    theirs.ledger.settingsChangedAt.reset();
    const PersistedData merged = DataMerge::merge(base, ours, theirs, now);
    EXPECT_EQ(merged.settings.playlistName, QStringLiteral("theirs"));
    EXPECT_EQ(merged.ledger.settingsChangedAt, now);
    // Changed on one side only: that side, whatever the dates say.
    EXPECT_EQ(DataMerge::merge(base, base, theirs, now).settings.playlistName,
              QStringLiteral("theirs"));
    EXPECT_EQ(DataMerge::merge(base, ours, base, now).settings.playlistName,
              QStringLiteral("ours"));
}

TEST_F(MergeCaseTest, TheLedgerIsWrittenUnderItsOwnKeysOnlyWhenItHoldsSomething) {
    PersistedData data{{}, {}, {}};
    data.ledger.recordDeletion(a.id, utc(2026, 11, 20, 9, 30, 15, 700));
    data.ledger.settingsChangedAt = utc(2026, 11, 21, 10, 0);
    const QByteArray bytes = DataFileCodec::encode(data);
    EXPECT_TRUE(bytes.startsWith("{\n  \"deletedSessions\" : [\n    {\n      \"deletedAt\" : "
                                 "\"2026-11-20T09:30:15Z\",\n      \"id\" : "
                                 "\"0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D\"\n    }\n  ],\n"))
        << bytes.toStdString();
    EXPECT_TRUE(bytes.endsWith("},\n  \"settingsChangedAt\" : \"2026-11-21T10:00:00Z\"\n}"))
        << bytes.toStdString();
    const auto decoded = DataFileCodec::decode(bytes);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->ledger, data.ledger);
    EXPECT_EQ(DataFileCodec::encode(PersistedData{}), DataFileCodec::encode(AppSettings{}, {}));
    // Strict like the rest of the file: a deletion without its date is no file of ours.
    EXPECT_FALSE(DataFileCodec::decode(QByteArray(bytes).replace("deletedAt", "deletedOn")));
}

} // namespace
} // namespace quill
