#pragma once

#include "AdaptiveColor.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The palette's functions of an argument, resolved for the current appearance.
/// QML reaches it through `Theme.palette`, whose change signal fires when the appearance
/// changes, so bindings calling these functions re-evaluate and recolour.
class ThemePalette : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Reached through Theme.palette")

public:
    explicit ThemePalette(QObject* parent = nullptr) : QObject(parent) {}

    void setAppearance(AppearanceMode appearance) { m_appearance = appearance; }
    AppearanceMode appearance() const { return m_appearance; }

    /// The neutral overlay fill at opacity `opacity`.
    Q_INVOKABLE QColor neutralFill(double opacity) const;
    /// One of the named accents ("mint", "mintBright", "coral", "amber", "blue") or text
    /// colours ("primaryText", "secondaryText"); an unknown name gives mint.
    Q_INVOKABLE QColor tint(const QString& name) const;
    /// A colour given per appearance as 24-bit RGB values with their opacities.
    Q_INVOKABLE QColor adaptive(int light, int dark, double lightAlpha, double darkAlpha) const;

    /// The same lookups for C++ callers.
    static AdaptiveColor namedColor(const QString& name);

private:
    AppearanceMode m_appearance = AppearanceMode::dark;
};

} // namespace quill
