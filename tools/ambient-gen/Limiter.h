#pragma once

#include "LoopCanvas.h"

#include <deque>

namespace ambientgen {

/// Look-ahead peak limiter over a whole loop: the gain starts to fall `lookAhead` seconds
/// before a peak, so a transient is shaped instead of clipped, and recovers with the
/// release time constant. The loop is run round twice, so the gain at the join is the gain
/// it would have in the middle of the loop.
inline void limitLoop(LoopCanvas& c, double threshold, double lookAhead = 0.003,
                      double release = 0.08) {
    const std::size_t n = c.frames;
    const auto w = std::max<std::size_t>(1, std::size_t(lookAhead * c.rate));
    std::vector<float> need(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double peak = std::max(std::fabs(c.left[i]), std::fabs(c.right[i]));
        need[i] = float(peak > threshold ? threshold / peak : 1.0);
    }
    // Least required gain over the next w samples (a sliding minimum, wrapping round).
    std::vector<float> least(n);
    std::deque<std::size_t> window; // indices into the unrolled loop, increasing need
    for (std::size_t k = 0; k < n + w; ++k) {
        const float v = need[k % n];
        while (!window.empty() && need[window.back() % n] >= v)
            window.pop_back();
        window.push_back(k);
        if (k >= w) {
            const std::size_t i = k - w;
            while (window.front() < i)
                window.pop_front();
            least[i] = need[window.front() % n];
        }
    }
    // Averaging the minimum over the same span ramps the gain down smoothly and still reaches
    // the required gain at the peak; the release then lets it back up slowly.
    const double up = 1 - std::exp(-1.0 / (release * c.rate));
    double sum = 0;
    for (std::size_t k = 0; k < w; ++k)
        sum += least[n - w + k];
    double gain = 1.0;
    std::vector<float> g(n);
    for (int pass = 0; pass < 2; ++pass)
        for (std::size_t i = 0; i < n; ++i) {
            sum += least[i] - least[(i + n - w) % n];
            const double smooth = sum / double(w);
            gain = smooth < gain ? smooth : gain + (smooth - gain) * up;
            g[i] = float(gain);
        }
    for (std::size_t i = 0; i < n; ++i) {
        c.left[i] *= g[i];
        c.right[i] *= g[i];
    }
}

} // namespace ambientgen
