#include "AmbientTileModel.h"

#include "store/AppStore.h"

namespace quill {

QString tintName(ThemeTint tint) {
    switch (tint) {
    case ThemeTint::amber:
        return QStringLiteral("amber");
    case ThemeTint::blue:
        return QStringLiteral("blue");
    case ThemeTint::coral:
        return QStringLiteral("coral");
    case ThemeTint::mint:
        break;
    }
    return QStringLiteral("mint");
}

AmbientTileModel::AmbientTileModel(QObject* parent) : QAbstractListModel(parent) {}

int AmbientTileModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(kAmbientSoundCount);
}

QVariant AmbientTileModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const AmbientSound sound = kAllAmbientSounds[std::size_t(index.row())];
    const Row& row = m_rows[std::size_t(index.row())];
    switch (role) {
    case RawRole:
        return rawValue(sound);
    case Qt::DisplayRole:
    case TitleRole:
        return title(sound);
    case SubtitleRole:
        return subtitle(sound);
    case SymbolRole:
        return QString::fromLatin1(info(sound).symbol);
    case TintRole:
        return tintName(info(sound).tint);
    case SelectedRole:
        return row.selected;
    case VolumeRole:
        return row.volume;
    case HelpRole:
        return row.selected ? QStringLiteral("移出混音") : QStringLiteral("加入混音");
    default:
        return {};
    }
}

QHash<int, QByteArray> AmbientTileModel::roleNames() const {
    return {{RawRole, "raw"},       {TitleRole, "title"}, {SubtitleRole, "subtitle"},
            {SymbolRole, "symbol"}, {TintRole, "tint"},   {SelectedRole, "selected"},
            {VolumeRole, "volume"}, {HelpRole, "help"}};
}

void AmbientTileModel::update(const AppStore& store) {
    for (std::size_t i = 0; i < kAmbientSoundCount; ++i) {
        const AmbientSound sound = kAllAmbientSounds[i];
        const Row next{store.isAmbientSelected(sound), store.settings().ambientVolume(sound)};
        Row& row = m_rows[i];
        QList<int> roles;
        if (row.selected != next.selected)
            roles << SelectedRole << HelpRole;
        if (row.volume != next.volume)
            roles << VolumeRole;
        if (roles.isEmpty())
            continue;
        row = next;
        const QModelIndex at = index(int(i));
        Q_EMIT dataChanged(at, at, roles);
    }
}

} // namespace quill
