#pragma once

#include <QString>
#include <vector>

namespace quill::loops {

/// A decoded recording, split into its two channels.
struct Recording {
    int rate = 0, channels = 0;
    std::vector<float> left, right;
};

Recording load(const QString& path);

/// The signal between lo and hi hertz (fourth-order slopes on both sides).
std::vector<float> band(const std::vector<float>& x, double lo, double hi, double rate);
/// Excess kurtosis: 0 for Gaussian noise, large for sparse impulses over a quiet bed.
double excessKurtosis(const std::vector<float>& x);
/// Distinct impulses per second: peaks standing well out of the local level, at least
/// 15 ms apart.
double impulsesPerSecond(const std::vector<float>& x, double rate);
/// RMS level per frame of the given length.
std::vector<double> envelope(const std::vector<float>& x, double rate, double frameSeconds);
/// 10 %-90 % rise times (seconds) of the swells in an envelope: every maximum that stands at
/// least 6 dB above the lowest point of the few seconds before it.
std::vector<double> swellRiseTimes(const std::vector<double>& env, double frameSeconds);
/// How far (dB) the strongest spectral line between lo and hi stands above the median of
/// the spectrum around it, over the whole signal.
double strongestToneDb(const std::vector<float>& x, double rate, double lo, double hi);
/// The highest normalised autocorrelation of the level in dB (less its moving average over
/// minLag) at lags from minLag seconds to half the signal: near 1 when a stretch of sound
/// comes back.
double strongestRecurrence(const std::vector<double>& env, double frameSeconds, double minLag);

} // namespace quill::loops
