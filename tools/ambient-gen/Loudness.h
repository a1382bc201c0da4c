#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace ambientgen {

/// Integrated loudness of a stereo signal at 48 kHz as broadcast meters measure it
/// (ITU-R BS.1770): K-weighting, mean square in 400 ms blocks overlapping by 75 %, an
/// absolute gate at -70 LUFS and a relative gate 10 LU under the mean of the blocks kept.
class LoudnessMeter {
public:
    void add(float left, float right) {
        const double l = m_left.process(left), r = m_right.process(right);
        m_sum += l * l + r * r;
        if (++m_inStep == kStep) {
            m_steps.push_back(m_sum / kStep);
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
    static constexpr int kStep = 4800; // 100 ms at 48 kHz

    struct Stage {
        double b0, b1, b2, a1, a2, z1 = 0, z2 = 0;
        double process(double x) {
            const double y = b0 * x + z1;
            z1 = b1 * x - a1 * y + z2;
            z2 = b2 * x - a2 * y;
            return y;
        }
    };
    // The two K-weighting sections at 48 kHz: a high shelf for the head, then the RLB high-pass.
    struct KWeighting {
        Stage shelf{1.53512485958697, -2.69169618940638, 1.19839281085285, -1.69065929318241,
                    0.73248077421585};
        Stage highPass{1.0, -2.0, 1.0, -1.99004745483398, 0.99007225036621};
        double process(double x) { return highPass.process(shelf.process(x)); }
    };

    KWeighting m_left, m_right;
    double m_sum = 0;
    int m_inStep = 0;
    std::vector<double> m_steps;
};

/// Integrated loudness of two whole channels.
inline double integratedLoudness(const std::vector<float>& left, const std::vector<float>& right) {
    LoudnessMeter meter;
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        meter.add(left[i], right[i]);
    return meter.integrated();
}

} // namespace ambientgen
