#pragma once

#include <QString>
#include <QStringList>

namespace quill {

/// Finds the ambient recordings: files named after a sound's raw value in the resource folder
/// "Ambient", next to the executable's share folder in both the build and the installed tree.
/// Any format libsndfile reads works, so real recordings can replace the generated ones.
class AmbientResources {
public:
    /// Looks in the default places.
    AmbientResources();
    /// Looks only in directory (tests).
    explicit AmbientResources(QString directory);

    /// The recording for raw, or an empty string when there is none.
    QString locate(const QString& raw) const;
    const QStringList& directories() const { return m_directories; }

    /// Extensions tried, in order.
    static const QStringList& extensions();

private:
    QStringList m_directories;
};

} // namespace quill
