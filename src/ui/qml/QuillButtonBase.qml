import QtQuick
import QtQuick.Templates as T

// The base of every button here: a control that takes the size of its content and
// background unless told otherwise; each button draws its own look. It also answers a screen
// reader's "press" and the Return key the way it answers a click.
T.AbstractButton {
    id: control
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: control.activate()
    Keys.onReturnPressed: control.activate()
    Keys.onEnterPressed: control.activate()

    // What a completed click does, for input that is not a pointer.
    function activate() {
        if (enabled)
            clicked()
    }
}
