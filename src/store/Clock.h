#pragma once

#include <QDateTime>

namespace quill {

/// The wall clock, injected so tests run in virtual time.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};

} // namespace quill
