import QtQuick

// What is in it is kept in view together, as far as there is room, while something in it has the
// focus (KeyboardAvoidance).
Item {
}
