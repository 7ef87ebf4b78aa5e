import QtQuick
import QtQuick.Window as Windows
import TrellisportManager.Presentation

// A separator of one pixel, however many of them make a point.
Rectangle {
    implicitHeight: 1 / Windows.Screen.devicePixelRatio
    color: Colors.separator
}
