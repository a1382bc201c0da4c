import QtQuick
import QtQuick.Templates as T

// The base of every button here: a control that takes the size of its content and
// background unless told otherwise; each button draws its own look.
T.AbstractButton {
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
}
