import QtQuick

// A screen that is made a moment after the start, or when it is first shown, so that the first
// frame need not wait for it.
Loader {
    id: root

    // The file of the screen, and what it is made with.
    required property url screen
    property var properties: ({})

    function make(): void {
        if (status === Loader.Null)
            setSource(screen, properties);
    }
    // The user's touches come first. Once begun so, it is ended so: the toolkit would forget the
    // properties if it had to hurry.
    function makeUnseen(): void {
        if (status === Loader.Null) {
            asynchronous = true;
            make();
        }
    }

    onVisibleChanged: {
        if (visible)
            make();
    }
    Component.onCompleted: {
        if (visible)
            make();
    }

    Timer {
        interval: 300
        running: true
        onTriggered: root.makeUnseen()
    }
}
