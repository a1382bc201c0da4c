#pragma once

#include "audio/AudioLog.h"

#include <QLibrary>

namespace quill {

/// A shared library opened at run time, whose functions are bound into typed pointers.
/// Binding stops being ok at the first missing symbol, so a caller checks once at the end.
class LazyLibrary {
public:
    LazyLibrary(const char* name, int majorVersion)
        : m_library(QString::fromLatin1(name), majorVersion) {
        m_ok = m_library.load();
        if (!m_ok)
            qCWarning(lcAudio).noquote() << "Cannot load" << name << ":" << m_library.errorString();
    }

    template <typename Function> void bind(const char* symbol, Function& target) {
        if (!m_ok)
            return;
        target = reinterpret_cast<Function>(m_library.resolve(symbol));
        if (!target) {
            qCWarning(lcAudio).noquote()
                << "Missing symbol" << symbol << "in" << m_library.fileName();
            m_ok = false;
        }
    }
    bool ok() const { return m_ok; }

private:
    QLibrary m_library; // never unloaded: the pointers bound from it live as long as the app
    bool m_ok = false;
};

} // namespace quill
