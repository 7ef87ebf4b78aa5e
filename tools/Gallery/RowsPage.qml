import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Rows"

    Specimen {
        caption: "ListGroup with ValueRow, LabeledRow (RowField, SwitchControl), ListRow, PressableRow"

        ListGroup {
            width: parent.width
            header: "Group"

            ValueRow {
                width: parent.width
                label: "Server"
                value: "agent.example"
            }
            ValueRow {
                width: parent.width
                label: "A label that is so long that it needs the second line of its row"
                value: "and a value that is long too"
            }
            LabeledRow {
                width: parent.width
                label: "Max Daily Bids"

                RowField {
                    label: "Max Daily Bids"
                    text: "10"
                }
            }
            LabeledRow {
                width: parent.width
                label: "Empty"

                RowField {
                    label: "Empty"
                    placeholderText: "0"
                }
            }
            LabeledRow {
                width: parent.width
                label: "Preview Mode"

                SwitchControl {
                    checked: true
                    Accessible.name: "Preview Mode"
                }
            }
            ListRow {
                width: parent.width
                contentItem: StyledText {
                    text: "ListRow"
                }
            }
            PressableRow {
                width: parent.width
                text: "PressableRow"
                contentItem: StyledText {
                    text: "PressableRow"
                }
            }
            PressableRow {
                width: parent.width
                text: "Pressed"
                down: true
                contentItem: StyledText {
                    text: "PressableRow, pressed"
                }
            }
            PressableRow {
                width: parent.width
                text: "Leads on"
                disclosure: true
                contentItem: StyledText {
                    text: "PressableRow that leads on"
                }
            }
        }
    }
    Specimen {
        caption: "ListGroup of one row"

        ListGroup {
            width: parent.width

            ValueRow {
                width: parent.width
                label: "Alone"
                value: "1"
            }
        }
    }
    Specimen {
        caption: "SpinnerRow"

        SpinnerRow {
            width: parent.width
        }
    }
    Specimen {
        caption: "RowGround: first, between, last"

        RowGround {
            width: parent.width
            height: 24
            last: false
        }
        RowGround {
            width: parent.width
            height: 24
            first: false
            last: false
        }
        RowGround {
            width: parent.width
            height: 24
            first: false
        }
    }
}
