import QtQuick
import TrellisportManager.Presentation

GalleryPage {
    title: "Colors and symbols"

    Grid {
        columns: 3
        columnSpacing: 8
        rowSpacing: 8

        Repeater {
            model: [
                {
                    "name": "background",
                    "value": Colors.background
                },
                {
                    "name": "surface",
                    "value": Colors.surface
                },
                {
                    "name": "innerSurface",
                    "value": Colors.innerSurface
                },
                {
                    "name": "hairline",
                    "value": Colors.hairline
                },
                {
                    "name": "dimText",
                    "value": Colors.dimText
                },
                {
                    "name": "mutedText",
                    "value": Colors.mutedText
                },
                {
                    "name": "accent",
                    "value": Colors.accent
                },
                {
                    "name": "agentSurface",
                    "value": Colors.agentSurface
                },
                {
                    "name": "white",
                    "value": Colors.white
                },
                {
                    "name": "gray",
                    "value": Colors.gray
                },
                {
                    "name": "red",
                    "value": Colors.red
                },
                {
                    "name": "yellow",
                    "value": Colors.yellow
                },
                {
                    "name": "green",
                    "value": Colors.green
                },
                {
                    "name": "secondaryText",
                    "value": Colors.secondaryText
                },
                {
                    "name": "placeholderText",
                    "value": Colors.placeholderText
                },
                {
                    "name": "separator",
                    "value": Colors.separator
                },
                {
                    "name": "fieldFill",
                    "value": Colors.fieldFill
                }
            ]

            Column {
                id: swatch

                required property var modelData

                spacing: 2

                Surface {
                    width: 112
                    height: 36
                    color: swatch.modelData.value
                }
                StyledText {
                    text: swatch.modelData.name
                    textStyle: Typography.Caption2
                    color: Colors.mutedText
                }
            }
        }
    }
    Specimen {
        caption: "SymbolImage: every symbol"

        Row {
            spacing: 14

            Repeater {
                model: ["chart.bar.fill", "folder.fill", "gearshape.fill", "checkmark.circle.fill", "star.fill", "chevron.left", "chevron.right", "magnifyingglass", "xmark.circle.fill"]

                SymbolImage {
                    required property string modelData

                    width: 24
                    height: 24
                    symbol: modelData
                }
            }
        }
    }
    Specimen {
        caption: "Surface: outlined, bare"

        Row {
            spacing: 8

            Surface {
                width: 100
                height: 40
            }
            Surface {
                width: 100
                height: 40
                outlineWidth: 0
            }
        }
    }
    Specimen {
        caption: "Hairline"

        Hairline {
            width: parent.width
        }
    }
}
