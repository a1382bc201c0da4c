#pragma once

#include "StoreViewModel.h"

namespace quill {

/// The ambient card's two settings, as effective values (an absent field reads as its
/// documented value); writes go through the store's settings command.
class SettingsBridge : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// Ambient sound follows the round's phases (on when unset).
    Q_PROPERTY(bool ambientFollowsFocus READ ambientFollowsFocus WRITE setAmbientFollowsFocus NOTIFY
                   changed)
    /// Master ambient volume 0…1 (0.7 when unset).
    Q_PROPERTY(double ambientMasterVolume READ ambientMasterVolume WRITE setAmbientMasterVolume
                   NOTIFY changed)

public:
    explicit SettingsBridge(AppStore& store, QObject* parent = nullptr);

    bool ambientFollowsFocus() const;
    void setAmbientFollowsFocus(bool follows);
    double ambientMasterVolume() const;
    void setAmbientMasterVolume(double volume);

Q_SIGNALS:
    void changed();

private:
    AppSettings current() const;
};

} // namespace quill
