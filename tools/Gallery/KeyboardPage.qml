import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "With the keyboard"

    Specimen {
        caption: "SearchField"
        keyboardAt: search

        SearchField {
            id: search

            width: parent.width
            placeholderText: "Search projects"
            text: "garden"
        }
    }
    Specimen {
        caption: "MultilineField"
        keyboardAt: lines.field

        MultilineField {
            id: lines

            width: parent.width
            text: "One\nTwo"
        }
    }
    Specimen {
        caption: "RowField"
        keyboardAt: number

        ListGroup {
            width: parent.width

            LabeledRow {
                width: parent.width
                label: "Max Daily Bids"

                RowField {
                    id: number

                    label: "Max Daily Bids"
                    text: "10"
                }
            }
        }
    }
    Specimen {
        caption: "SwitchControl"
        keyboardAt: preview

        ListGroup {
            width: parent.width

            LabeledRow {
                width: parent.width
                label: "Preview Mode"

                SwitchControl {
                    id: preview

                    checked: true
                    Accessible.name: "Preview Mode"
                }
            }
        }
    }
    Specimen {
        caption: "PressableRow"
        keyboardAt: pressable

        ListGroup {
            width: parent.width

            PressableRow {
                id: pressable

                width: parent.width
                text: "Leads on"
                disclosure: true
                contentItem: StyledText {
                    text: "Leads on"
                }
            }
        }
    }
    Specimen {
        caption: "PressableControl"
        keyboardAt: save

        PressableControl {
            id: save

            text: "Save"
            contentItem: StyledText {
                text: "Save"
            }
        }
    }
}
