#pragma once

#include <QString>

namespace quill {

/// Where the data file lives. An empty directory means no location is available.
class DataLocation {
public:
    virtual ~DataLocation() = default;
    virtual QString directory() const = 0;
};

} // namespace quill
