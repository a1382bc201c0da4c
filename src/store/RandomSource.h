#pragma once

#include <QtGlobal>

namespace quill {

/// Uniform random integers; the system generator in the app, scripted in tests.
class RandomSource {
public:
    virtual ~RandomSource() = default;
    /// A value drawn uniformly from the closed range [lowest, highest].
    virtual qint64 between(qint64 lowest, qint64 highest) = 0;
};

} // namespace quill
