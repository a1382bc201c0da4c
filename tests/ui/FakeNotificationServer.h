#pragma once

#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <vector>

namespace quill::test {

/// Stands in for the desktop's notification server on the test's own bus.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Shown {
        uint replaces;
        QString icon, summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    std::vector<Shown> shown;
    std::vector<uint> closed;

public Q_SLOTS:
    uint Notify(const QString&, uint replaces, const QString& icon, const QString& summary,
                const QString& body, const QStringList& actions, const QVariantMap& hints, int) {
        shown.push_back({replaces, icon, summary, body, actions, hints});
        return uint(100 + shown.size());
    }
    void CloseNotification(uint id) { closed.push_back(id); }
    QStringList GetCapabilities() { return {QStringLiteral("actions"), QStringLiteral("body")}; }
};

} // namespace quill::test
