#pragma once

#include <QString>
#include <QStringList>

namespace quill {

/// Finds the ambient recordings: files named after a sound's raw value in the resource folder
/// "Ambient", first in the share folder beside the executable's (installed in any prefix, or
/// the build tree), then in the XDG data folders. Any format libsndfile reads works, so real
/// recordings can replace the generated ones.
class AmbientResources {
public:
    /// The rate the generated recordings are made at. They hold nothing above 15 kHz, and
    /// decoding them at two thirds of 48 kHz costs two thirds of the time.
    static constexpr int kRecordingRate = 32000;

    /// Looks in the default places.
    AmbientResources();
    /// Looks only in directory (tests).
    explicit AmbientResources(QString directory);

    /// The recording for raw, or an empty string when there is none.
    QString locate(const QString& raw) const;
    const QStringList& directories() const { return m_directories; }

    /// The folders tried, in order, for an executable in applicationDir.
    static QStringList searchOrder(const QString& applicationDir, const QStringList& dataDirs);

    /// Extensions tried, in order.
    static const QStringList& extensions();

private:
    QStringList m_directories;
};

} // namespace quill
