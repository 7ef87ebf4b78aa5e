import QtQuick
import TrellisportManager.Presentation

// A root tab that shows its title.
NavigationPage {
    scrollArea: Flickable {}
}
