// Writes a spectrogram PNG per recording: time across (10 pixels a second), frequency up a
// logarithmic axis from 50 Hz to 20 kHz, level in dB from black through violet and orange
// to white, with the loop's loudness in the file name's caption.
// Usage: quillmere-ambient-spectrogram <output folder> <recording> ...

#include "Loudness.h"
#include "Spectrum.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <sndfile.h>

#include <cmath>
#include <cstdio>
#include <vector>

namespace {

QColor heat(double t) {
    t = std::clamp(t, 0.0, 1.0);
    // black -> violet -> orange -> pale yellow
    const double r = std::clamp(1.6 * t, 0.0, 1.0), g = std::clamp(2.0 * t - 0.8, 0.0, 1.0),
                 b = std::clamp(t < 0.35 ? 2.2 * t : 1.4 - 2 * t, 0.0, 1.0);
    return QColor::fromRgbF(float(r), float(g), float(std::max(b, 1.8 * t - 0.8)));
}

bool draw(const QString& input, const QString& output) {
    SF_INFO info{};
    SNDFILE* f = sf_open(input.toLocal8Bit().constData(), SFM_READ, &info);
    if (!f)
        return false;
    std::vector<float> all(std::size_t(info.frames) * std::size_t(info.channels));
    sf_readf_float(f, all.data(), info.frames);
    sf_close(f);
    std::vector<float> left(std::size_t(info.frames)), right(left.size());
    for (std::size_t i = 0; i < left.size(); ++i) {
        left[i] = all[i * std::size_t(info.channels)];
        right[i] = all[i * std::size_t(info.channels) + (info.channels > 1 ? 1 : 0)];
    }
    const double rate = info.samplerate;
    constexpr std::size_t kSize = 4096;
    const auto hop = std::size_t(rate / 10);
    const int width = int(left.size() / hop), height = 360, axis = 40;
    QImage image(width + axis, height + 20, QImage::Format_RGB32);
    image.fill(Qt::black);
    const double lo = std::log(50.0), hi = std::log(20000.0);
    for (int x = 0; x < width; ++x) {
        const auto p = ambientgen::powerSpectrum(left, std::size_t(x) * hop, kSize);
        for (int y = 0; y < height; ++y) {
            const double hz = std::exp(lo + (hi - lo) * (height - 1 - y) / (height - 1));
            if (hz >= rate / 2)
                continue; // nothing is stored above half the rate: left black
            const auto k = std::min(p.size() - 1, std::size_t(hz / rate * kSize));
            const double db = 10 * std::log10(p[k] + 1e-20);
            image.setPixelColor(axis + x, y, heat((db + 40) / 80));
        }
    }
    QPainter painter(&image);
    painter.setPen(Qt::white);
    for (double hz : {100.0, 1000.0, 10000.0}) {
        const int y = int((hi - std::log(hz)) / (hi - lo) * (height - 1));
        painter.drawLine(axis - 6, y, axis, y);
        painter.drawText(2, y + 4,
                         hz >= 1000 ? QStringLiteral("%1k").arg(hz / 1000) : QString::number(hz));
    }
    for (int s = 0; s * 10 < width; s += 30)
        painter.drawText(axis + s * 10, height + 15, QStringLiteral("%1 s").arg(s));
    painter.drawText(axis + 6, 14,
                     QStringLiteral("%1  %2 LUFS")
                         .arg(QFileInfo(input).fileName())
                         .arg(ambientgen::integratedLoudness(left, right, rate), 0, 'f', 1));
    painter.end();
    return image.save(output);
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication::setAttribute(Qt::AA_Use96Dpi);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv); // text needs the font database
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s <output folder> <recording> ...\n", argv[0]);
        return 2;
    }
    QDir().mkpath(QString::fromLocal8Bit(argv[1]));
    int failures = 0;
    for (int a = 2; a < argc; ++a) {
        const QString input = QString::fromLocal8Bit(argv[a]);
        const QString output = QString::fromLocal8Bit(argv[1]) + QLatin1Char('/') +
                               QFileInfo(input).completeBaseName() + QStringLiteral(".png");
        if (!draw(input, output)) {
            std::fprintf(stderr, "cannot draw %s\n", argv[a]);
            ++failures;
        }
    }
    return failures ? 1 : 0;
}
