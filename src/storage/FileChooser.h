#pragma once

#include <QString>
#include <optional>

namespace quill {

/// Asks the user where to save a file; no value when cancelled.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    virtual std::optional<QString> chooseSaveLocation(const QString& suggestedName,
                                                      const QString& filter) = 0;
};

} // namespace quill
