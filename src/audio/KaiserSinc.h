#pragma once

#include <cmath>

namespace quill {

/// The low-pass kernel both rate converters use: a sinc cut off at `cutoff` (a fraction of
/// the source rate), under a Kaiser window of half-width `half` source frames and shape
/// `beta`, evaluated `distance` source frames from its centre.
class KaiserSinc {
public:
    KaiserSinc(double cutoff, double half, double beta)
        : m_cutoff(cutoff), m_half(half), m_beta(beta), m_norm(besselI0(beta)) {}

    double operator()(double distance) const {
        const double u = distance / m_half;
        if (std::fabs(u) >= 1)
            return 0.0;
        const double x = 2 * m_cutoff * distance;
        const double sinc = distance == 0 ? 1.0 : std::sin(kPi * x) / (kPi * x);
        return sinc * besselI0(m_beta * std::sqrt(1 - u * u)) / m_norm;
    }

private:
    static constexpr double kPi = 3.14159265358979323846;

    static double besselI0(double x) {
        double sum = 1, term = 1;
        for (int k = 1; k < 60; ++k) {
            term *= (x / (2 * k)) * (x / (2 * k));
            sum += term;
            if (term < sum * 1e-16)
                break;
        }
        return sum;
    }

    double m_cutoff, m_half, m_beta, m_norm;
};

} // namespace quill
