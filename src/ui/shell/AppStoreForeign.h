#pragma once

#include "store/AppStore.h"

#include <QtQml/qqml.h>

namespace quill {

/// Makes the store a known type of the QML module, so screens declare `AppStore`
/// properties; it is created in C++ and handed to the window.
struct AppStoreForeign {
    Q_GADGET
    QML_FOREIGN(quill::AppStore)
    QML_NAMED_ELEMENT(AppStore)
    QML_UNCREATABLE("The store is created by the application")
};

} // namespace quill
