import QtQuick
import TrellisportManager.Presentation

// A screen or tab that is one list of cards: a spinner until the first load has ended, then the
// cards, or a sentence where there are none.
Screen {
    id: root

    required property ListScreenModel model
    required property string emptyText
    property alias delegate: list.delegate
    property alias lead: list.lead
    readonly property alias list: list

    screenModel: model
    announcement: {
        switch (root.model.content) {
        case ListScreenModel.Rows:
            return qsTr("%1 shown").arg(list.Accessible.name);
        case ListScreenModel.Empty:
            return root.emptyText;
        default:
            return "";
        }
    }

    CardList {
        id: list

        objectName: "list"
        anchors.fill: parent
        visible: root.model.content === ListScreenModel.Rows
        model: root.model.rows
    }
    EmptyText {
        width: parent.width
        visible: root.model.content === ListScreenModel.Empty
        text: root.emptyText
    }
    Spinner {
        objectName: "spinner"
        anchors.horizontalCenter: parent.horizontalCenter
        y: Metrics.inset
        visible: root.model.content === ListScreenModel.Spinner
    }
}
