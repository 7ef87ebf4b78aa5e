pragma ComponentBehavior: Bound

import QtQuick
import TrellisportManager.Presentation
import TrellisportManager.ProjectDetail

// What the agent has asked its owner, to be answered here.
ListScreen {
    id: root

    required property DecisionsViewModel viewModel

    // From a card's editor to the next one's, whether or not that card exists yet, and out of the
    // list behind the last.
    function moveFocus(from: Item, row: int, forward: bool): void {
        const target = root.viewModel.editorRow(row, forward);
        if (target >= 0) {
            root.list.positionViewAtIndex(target, ListView.Contain);
            const card = root.list.itemAtIndex(target) as DecisionRow;
            card?.takeFocus(forward);
            return;
        }
        let next = from;
        do {
            next = next.nextItemInFocusChain(forward);
        } while (next !== from && root.isInList(next));
        next.forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }
    function isInList(item: Item): bool {
        for (let at = item; at; at = at.parent) {
            if (at === root.list)
                return true;
        }
        return false;
    }

    model: viewModel
    emptyText: qsTr("No decisions requested")
    list.Accessible.name: qsTr("Decisions")
    // The first editor may be far below what is seen, and not exist yet.
    list.Keys.onTabPressed: root.moveFocus(root.list, -1, true)
    list.bottomMargin: Metrics.inset + avoidance.coveredBelow
    delegate: DecisionRow {
        id: row

        onTyped: text => root.viewModel.setTypedAnswer(row.decisionId, text)
        onSubmitted: root.viewModel.submitAnswer(row.decisionId)
        onTabbed: (from, forward) => root.moveFocus(from, row.index, forward)
    }

    Connections {
        function onAnswerEnded(isSent: bool, isShown: bool): void {
            if (isShown)
                Announcements.say(qsTr("Answer sent"));
            else
                Announcements.say(isSent ? qsTr("Answer sent; the decisions could not be loaded again") : qsTr("Answer not sent"));
        }

        target: root.viewModel
    }
    KeyboardAvoidance {
        id: avoidance

        scrollArea: root.list
    }
}
