import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// A log entry's type on a faint ground of its colour.
Badge {
    required property string type

    text: LogTypeStyle.label(type)
    tint: LogTypeStyle.color(type)
    fontSize: 9
}
