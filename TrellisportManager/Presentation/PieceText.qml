import QtQuick
import TrellisportManager.Presentation

// A long text of a card, or the piece of it that a row shows.
StyledText {
    // Which of the card's long texts it is (CardRows).
    required property int part
}
