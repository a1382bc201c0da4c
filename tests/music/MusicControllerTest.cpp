#include "audio/music/MusicController.h"
#include "EventLoopWait.h"
#include "audio/music/MusicServices.h"

#include <QThread>
#include <gtest/gtest.h>
#include <thread>

using namespace quill;
using quill::test::drainEvents;
using quill::test::waitUntil;

namespace {

// A backend that answers however the test tells it to, including in ways it must not.
class ScriptedBackend final : public MusicPlayer {
public:
    void playRandom(MusicService service, MusicSource source, const QString& name,
                    Completion completion) override {
        services.push_back(service);
        sources.push_back(source);
        names << name;
        behaviour(std::move(completion));
    }
    std::function<void(Completion)> behaviour = [](Completion) {};
    std::vector<MusicService> services;
    std::vector<MusicSource> sources;
    QStringList names;
};

struct Fixture {
    Fixture() {
        auto b = std::make_unique<ScriptedBackend>();
        backend = b.get();
        controller = std::make_unique<MusicController>(std::move(b));
    }
    void request() {
        controller->playRandom(MusicService::netEase, MusicSource::playlist, u"晨间"_qs,
                               [this](const MusicOutcome& o) {
                                   outcomes.push_back(o);
                                   threads.push_back(QThread::currentThread());
                               });
    }
    ScriptedBackend* backend = nullptr;
    std::unique_ptr<MusicController> controller;
    std::vector<MusicOutcome> outcomes;
    std::vector<QThread*> threads;
};

} // namespace

// The request passes through unchanged; a synchronous answer stays synchronous and a second
// one never reaches the caller.
TEST(MusicController, ABackendAnsweringTwiceReachesTheCallerOnce) {
    Fixture f;
    f.backend->behaviour = [](MusicPlayer::Completion done) {
        done({true, u"first"_qs});
        done({false, u"second"_qs});
    };
    f.request();
    ASSERT_EQ(f.outcomes.size(), 1u);
    EXPECT_EQ(f.outcomes[0].text, u"first"_qs);
    EXPECT_EQ(f.backend->services, std::vector{MusicService::netEase});
    EXPECT_EQ(f.backend->sources, std::vector{MusicSource::playlist});
    EXPECT_EQ(f.backend->names, QStringList{u"晨间"_qs});
}

TEST(MusicController, EmptyTextsBecomeTheShownDefaults) {
    Fixture f;
    std::vector<MusicOutcome> answers{{true, {}}, {false, {}}, {false, u" "_qs}};
    for (const MusicOutcome& a : answers) {
        f.backend->behaviour = [a](MusicPlayer::Completion done) { done(a); };
        f.request();
    }
    ASSERT_EQ(f.outcomes.size(), 3u);
    EXPECT_EQ(f.outcomes[0].text, u"已开始随机播放"_qs);
    EXPECT_TRUE(f.outcomes[0].success);
    EXPECT_EQ(f.outcomes[1].text, u"无法控制音乐 App"_qs);
    EXPECT_FALSE(f.outcomes[1].success);
    EXPECT_EQ(f.outcomes[2].text, u" "_qs) << "only an empty message is replaced";
}

TEST(MusicController, AnswersFromAnotherThreadArriveOnTheUiThreadOnce) {
    Fixture f;
    std::thread worker;
    f.backend->behaviour = [&worker](MusicPlayer::Completion done) {
        worker = std::thread([done] {
            done({true, u"from a worker"_qs});
            done({true, u"again"_qs});
        });
    };
    f.request();
    worker.join();
    EXPECT_TRUE(f.outcomes.empty()) << "delivered on the worker thread";
    ASSERT_TRUE(waitUntil([&] { return !f.outcomes.empty(); }));
    drainEvents();
    ASSERT_EQ(f.outcomes.size(), 1u);
    EXPECT_EQ(f.outcomes[0].text, u"from a worker"_qs);
    EXPECT_EQ(f.threads[0], QCoreApplication::instance()->thread());
}

TEST(MusicController, TheAppsPlayerIsAController) {
    const auto player = createMusicPlayer();
    ASSERT_NE(player, nullptr);
    EXPECT_NE(dynamic_cast<MusicController*>(player.get()), nullptr);
}
