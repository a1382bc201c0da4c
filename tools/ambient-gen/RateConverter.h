#pragma once

#include "LoopCanvas.h"

#include "audio/KaiserSinc.h"

#include <numeric>

namespace ambientgen {

/// The loop at another rate, converted as a loop: the windowed-sinc filter reads across the
/// join, so the seam stays as smooth as the rest. Everything above 92.5 % of the new Nyquist
/// frequency is removed before it can fold back (Kaiser window, about -95 dB).
inline LoopCanvas atRate(const LoopCanvas& in, int rate) {
    const int g = std::gcd(in.rate, rate);
    const int up = rate / g, down = in.rate / g; // output frame n sits at input n * down / up
    const auto frames = std::size_t(std::int64_t(in.frames) * up / down);
    LoopCanvas out(rate, frames);
    constexpr int kHalf = 64;
    constexpr double kBeta = 9.5;
    const double cutoff = 0.925 * 0.5 * std::min(1.0, double(rate) / in.rate); // of input rate
    const quill::KaiserSinc kernel(cutoff, kHalf, kBeta);
    // One kernel per fractional position; tap j weighs input frame floor(t) - kHalf + 1 + j.
    std::vector<std::vector<float>> kernels(std::size_t(up), std::vector<float>(2 * kHalf));
    for (int p = 0; p < up; ++p) {
        const double frac = double(p) / up;
        double sum = 0;
        std::vector<double> h(2 * kHalf);
        for (int j = 0; j < 2 * kHalf; ++j) {
            h[std::size_t(j)] = kernel(double(j - kHalf + 1) - frac);
            sum += h[std::size_t(j)];
        }
        for (int j = 0; j < 2 * kHalf; ++j)
            kernels[std::size_t(p)][std::size_t(j)] = float(h[std::size_t(j)] / sum);
    }
    // The loop with kHalf frames of its other end on each side, so no read has to wrap.
    std::vector<float> left(in.frames + 2 * kHalf), right(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        const std::size_t from = in.wrap(std::int64_t(i) - kHalf);
        left[i] = in.left[from];
        right[i] = in.right[from];
    }
    for (std::size_t n = 0; n < frames; ++n) {
        const std::int64_t at = std::int64_t(n) * down;
        const auto first = std::size_t(at / up + 1); // whole - kHalf + 1, shifted by kHalf
        const auto& k = kernels[std::size_t(at % up)];
        double l = 0, r = 0;
        for (int j = 0; j < 2 * kHalf; ++j) {
            l += k[std::size_t(j)] * left[first + std::size_t(j)];
            r += k[std::size_t(j)] * right[first + std::size_t(j)];
        }
        out.left[n] = float(l);
        out.right[n] = float(r);
    }
    return out;
}

} // namespace ambientgen
