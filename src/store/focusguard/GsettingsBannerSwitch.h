#pragma once

#include "store/focusguard/BannerSwitch.h"

#include <QObject>

namespace quill {

/// The banner switch through the `gsettings` tool: Qt cannot read GSettings, and only a
/// write through dconf reaches GNOME Shell.
class GsettingsBannerSwitch final : public QObject, public BannerSwitch {
    Q_OBJECT

public:
    explicit GsettingsBannerSwitch(QString program = QStringLiteral("gsettings"),
                                   QObject* parent = nullptr);

    void read(std::function<void(std::optional<bool>)> done) override;
    void write(bool on, std::function<void(bool written)> done) override;
    void restoreOnExit(const QString& markFile) override;

private:
    void run(const QStringList& arguments, std::function<void(bool ok, QByteArray out)> done);

    QString m_program;
};

} // namespace quill
