#include "store/focusguard/GsettingsBannerSwitch.h"

#include "store/focusguard/FocusGuardLog.h"

#include <QProcess>

namespace quill {

namespace {
const QString kSchema = QStringLiteral("org.gnome.desktop.notifications");
const QString kKey = QStringLiteral("show-banners");
} // namespace

GsettingsBannerSwitch::GsettingsBannerSwitch(QString program, QObject* parent)
    : QObject(parent), m_program(std::move(program)) {}

void GsettingsBannerSwitch::run(const QStringList& arguments,
                                std::function<void(bool ok, QByteArray out)> done) {
    auto* process = new QProcess(this);
    connect(process, &QProcess::finished, this,
            [process, done](int code, QProcess::ExitStatus status) {
                process->deleteLater();
                const bool ok = status == QProcess::NormalExit && code == 0;
                if (!ok)
                    qCDebug(lcFocusGuard) << "gsettings failed:" << process->readAllStandardError();
                done(ok, process->readAllStandardOutput());
            });
    connect(process, &QProcess::errorOccurred, this, [process, done](QProcess::ProcessError e) {
        if (e != QProcess::FailedToStart)
            return; // the finished signal follows
        qCDebug(lcFocusGuard) << "gsettings did not start:" << process->errorString();
        process->deleteLater();
        done(false, {});
    });
    process->start(m_program, arguments);
}

void GsettingsBannerSwitch::read(std::function<void(std::optional<bool>)> done) {
    run({QStringLiteral("get"), kSchema, kKey}, [done](bool ok, const QByteArray& out) {
        const QByteArray value = out.trimmed();
        if (ok && (value == "true" || value == "false"))
            done(value == "true");
        else
            done(std::nullopt);
    });
}

void GsettingsBannerSwitch::write(bool on, std::function<void(bool written)> done) {
    run({QStringLiteral("set"), kSchema, kKey,
         on ? QStringLiteral("true") : QStringLiteral("false")},
        [done](bool ok, const QByteArray&) { done(ok); });
}

void GsettingsBannerSwitch::restoreOnExit(const QString& markFile) {
    // The user may have changed the switch since: only an "off" is turned back on. The mark
    // goes only once banners are known to be on, so a failure here is mended at next start.
    const QString script =
        QStringLiteral(
            "v=$(\"$1\" get %1 %2) || exit 1; "
            "if [ \"$v\" = false ]; then \"$1\" set %1 %2 true || exit 1; fi; rm -f \"$2\"")
            .arg(kSchema, kKey);
    QProcess::startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script,
                                                        QStringLiteral("sh"), m_program, markFile});
}

} // namespace quill
