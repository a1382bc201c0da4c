#pragma once

#include "model/AmbientSound.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>
#include <array>

namespace quill {

class AppStore;

/// One row per ambient sound, in catalogue order, with its selection and volume.
/// Only rows whose values changed report a change, so moving one slider redraws one tile.
class AmbientTileModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by AmbientCardViewModel")

public:
    enum Role {
        RawRole = Qt::UserRole + 1,
        TitleRole,
        SubtitleRole,
        SymbolRole,
        TintRole,
        SelectedRole,
        VolumeRole,
        HelpRole,
    };

    explicit AmbientTileModel(QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Reads selection and volumes from the store.
    void update(const AppStore& store);

private:
    struct Row {
        bool selected = false;
        double volume = 0.7;
    };
    std::array<Row, kAmbientSoundCount> m_rows{};
};

/// The tint name of a catalogue tint ("mint", "amber", "blue", "coral").
QString tintName(ThemeTint tint);

} // namespace quill
