import QtQuick

// Holds the one item that a component makes, at its own size; another component replaces it by a
// fresh one. In place of a Loader, which before Qt 6.5 makes no component that knows the ids of the
// file it stands in.
Item {
    id: root

    property Component component: null
    readonly property alias item: d.item

    function renew(): void {
        if (!d.isComplete || d.made === root.component)
            return;
        d.made = root.component;
        d.release();
        if (root.component)
            d.item = root.component.createObject(root) as Item;
    }

    implicitWidth: d.item?.implicitWidth ?? 0
    implicitHeight: d.item?.implicitHeight ?? 0
    onComponentChanged: renew()
    Component.onCompleted: {
        d.isComplete = true;
        renew();
    }

    Binding {
        target: d.item
        property: "width"
        value: root.width
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: d.item
        property: "height"
        value: root.height
        restoreMode: Binding.RestoreNone
    }
    QtObject {
        id: d

        property bool isComplete: false
        property Component made: null
        property Item item: null

        // It is gone at once for whoever looks, and for itself.
        function release(): void {
            if (!d.item)
                return;
            d.item.visible = false;
            d.item.destroy();
            d.item = null;
        }
    }
}
