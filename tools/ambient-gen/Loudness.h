#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace ambientgen {

/// Integrated loudness of a stereo signal as broadcast meters measure it (ITU-R BS.1770):
/// K-weighting, mean square in 400 ms blocks overlapping by 75 %, an absolute gate at
/// -70 LUFS and a relative gate 10 LU under the mean of the blocks kept.
class LoudnessMeter {
public:
    explicit LoudnessMeter(double rate = 48000.0)
        : m_step(int(std::lround(rate / 10))), m_left(rate), m_right(rate) {}

    void add(float left, float right) {
        const double l = m_left.process(left), r = m_right.process(right);
        m_sum += l * l + r * r;
        if (++m_inStep == m_step) {
            m_steps.push_back(m_sum / m_step);
            m_sum = 0;
            m_inStep = 0;
        }
    }

    /// LUFS; -inf when nothing passes the gates.
    double integrated() const {
        std::vector<double> blocks;
        for (std::size_t i = 3; i < m_steps.size(); ++i)
            blocks.push_back(0.25 *
                             (m_steps[i - 3] + m_steps[i - 2] + m_steps[i - 1] + m_steps[i]));
        auto gatedMean = [&](double threshold) {
            double sum = 0;
            std::size_t n = 0;
            for (double z : blocks)
                if (lufs(z) > threshold) {
                    sum += z;
                    ++n;
                }
            return n ? sum / double(n) : 0.0;
        };
        const double ungated = gatedMean(-70.0);
        if (ungated <= 0)
            return -INFINITY;
        return lufs(gatedMean(lufs(ungated) - 10.0));
    }

    static double lufs(double meanSquare) {
        return -0.691 + 10.0 * std::log10(meanSquare + 1e-300);
    }

private:
    struct Stage {
        double b0, b1, b2, a1, a2, z1 = 0, z2 = 0;
        double process(double x) {
            const double y = b0 * x + z1;
            z1 = b1 * x - a1 * y + z2;
            z2 = b2 * x - a2 * y;
            return y;
        }
    };
    // The two K-weighting sections, a high shelf for the head and then the RLB high-pass,
    // derived for the rate from the analogue prototypes; at 48 kHz they are the published
    // coefficients.
    struct KWeighting {
        Stage shelf, highPass;
        explicit KWeighting(double rate) : shelf(shelfAt(rate)), highPass(highPassAt(rate)) {}
        double process(double x) { return highPass.process(shelf.process(x)); }

        static Stage shelfAt(double rate) {
            const double k = std::tan(M_PI * 1681.974450955533 / rate);
            const double q = 0.7071752369554196;
            const double vh = std::pow(10.0, 3.999843853973347 / 20);
            const double vb = std::pow(vh, 0.4996667741545416);
            const double a0 = 1 + k / q + k * k;
            return {(vh + vb * k / q + k * k) / a0, 2 * (k * k - vh) / a0,
                    (vh - vb * k / q + k * k) / a0, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0};
        }
        static Stage highPassAt(double rate) {
            const double k = std::tan(M_PI * 38.13547087602444 / rate);
            const double q = 0.5003270373238773;
            const double a0 = 1 + k / q + k * k;
            return {1.0, -2.0, 1.0, 2 * (k * k - 1) / a0, (1 - k / q + k * k) / a0};
        }
    };

    int m_step;
    KWeighting m_left, m_right;
    double m_sum = 0;
    int m_inStep = 0;
    std::vector<double> m_steps;
};

/// Integrated loudness of two whole channels.
inline double integratedLoudness(const std::vector<float>& left, const std::vector<float>& right,
                                 double rate = 48000.0) {
    LoudnessMeter meter(rate);
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        meter.add(left[i], right[i]);
    return meter.integrated();
}

} // namespace ambientgen
