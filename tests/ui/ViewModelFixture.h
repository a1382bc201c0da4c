#pragma once

#include "store/AppStore.h"
#include "support/FakeServices.h"

#include <gtest/gtest.h>
#include <memory>

namespace quill::test {

/// A real store on fake services for the view-model tests, driven in virtual time.
class ViewModelTest : public ::testing::Test {
protected:
    FakeServices fakes;
    std::unique_ptr<AppStore> store = std::make_unique<AppStore>(fakes.services());

    void advance(qint64 ms) { fakes.scheduler->advance(ms); }
    void edit(const std::function<void(AppSettings&)>& change) { store->editSettings(change); }
    /// Starts a round whose first reminder comes after `reminderSeconds` of net focus.
    void start(qint64 reminderSeconds = 3600) {
        fakes.random->script.push_back(reminderSeconds);
        store->startSession();
    }
};

} // namespace quill::test
