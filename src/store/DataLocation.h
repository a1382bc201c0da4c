#pragma once

#include <QString>

namespace quill {

/// Where the data file lives. An empty directory means no location is available.
class DataLocation {
public:
    virtual ~DataLocation() = default;
    virtual QString directory() const = 0;
    /// Where a copy goes when the data file cannot be written as the app quits; empty for none.
    virtual QString rescueDirectory() const { return {}; }
};

} // namespace quill
