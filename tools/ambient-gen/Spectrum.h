#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

namespace ambientgen {

/// In-place radix-2 FFT; the size must be a power of two.
inline void fft(std::vector<std::complex<double>>& a) {
    const std::size_t n = a.size();
    for (std::size_t i = 1, j = 0; i < n; ++i) {
        std::size_t bit = n >> 1;
        for (; j & bit; bit >>= 1)
            j ^= bit;
        j ^= bit;
        if (i < j)
            std::swap(a[i], a[j]);
    }
    for (std::size_t len = 2; len <= n; len <<= 1) {
        const double angle = -2 * 3.14159265358979323846 / double(len);
        const std::complex<double> wl(std::cos(angle), std::sin(angle));
        for (std::size_t i = 0; i < n; i += len) {
            std::complex<double> w(1);
            for (std::size_t k = 0; k < len / 2; ++k) {
                const auto u = a[i + k], v = a[i + k + len / 2] * w;
                a[i + k] = u + v;
                a[i + k + len / 2] = u - v;
                w *= wl;
            }
        }
    }
}

/// Power spectrum (size/2 + 1 bins) of `size` samples from `from`, Hann-windowed.
inline std::vector<double> powerSpectrum(const std::vector<float>& x, std::size_t from,
                                         std::size_t size) {
    std::vector<std::complex<double>> a(size);
    for (std::size_t i = 0; i < size; ++i) {
        const double w =
            0.5 - 0.5 * std::cos(2 * 3.14159265358979323846 * double(i) / double(size));
        a[i] = from + i < x.size() ? w * x[from + i] : 0.0;
    }
    fft(a);
    std::vector<double> p(size / 2 + 1);
    for (std::size_t k = 0; k < p.size(); ++k)
        p[k] = std::norm(a[k]);
    return p;
}

/// Welch average of the power spectrum over the whole signal, half-overlapping frames.
inline std::vector<double> averageSpectrum(const std::vector<float>& x, std::size_t size) {
    std::vector<double> sum(size / 2 + 1, 0.0);
    int frames = 0;
    for (std::size_t from = 0; from + size <= x.size(); from += size / 2, ++frames) {
        const auto p = powerSpectrum(x, from, size);
        for (std::size_t k = 0; k < p.size(); ++k)
            sum[k] += p[k];
    }
    for (double& v : sum)
        v /= std::max(1, frames);
    return sum;
}

} // namespace ambientgen
