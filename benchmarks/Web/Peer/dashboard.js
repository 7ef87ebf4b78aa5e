import { ask, element, showError } from './service.js';

const reload = 60_000;
const money = (amount) => `$${amount.toFixed(2)}`;

// Label, value, colour; first the six figures, then the two amounts.
function cards(summary) {
    const count = (status) => summary.status_counts[status] ?? 0;
    return [
        [
            ['Discovered', count('discovered'), '#8e8e93'],
            ['Questions', count('questions_sent'), '#ffd60a'],
            ['Bids Active', count('bid_placed'), '#3b82f6'],
            ['Awarded', count('awarded'), '#30d158'],
            ['Decisions', summary.pending_decisions, summary.pending_decisions ? '#ffd60a' : '#8e8e93'],
            ['Completed', count('completed'), '#66d4cf'],
        ],
        [
            ['Bids Pending', money(summary.bids_pending), '#3b82f6'],
            ['Total Earned', money(summary.total_earned), '#66d4cf'],
        ],
    ];
}

function tile([label, value, colour]) {
    const made = element('div', 'tile', '');
    const figure = element('strong', '', value);
    figure.style.color = colour;
    made.append(figure, element('span', '', label));
    return made;
}

/** Shows it and keeps it up to date until what it returns is called. */
export function showDashboard(page) {
    const abort = new AbortController();
    const load = async () => {
        try {
            const [figures, amounts] = cards(await ask('/dashboard', abort.signal));
            const tiles = element('div', 'tiles', '');
            tiles.append(...figures.map(tile));
            const sums = element('div', 'tiles money', '');
            sums.append(...amounts.map(tile));
            page.replaceChildren(tiles, sums);
        } catch (problem) {
            showError(page, problem);
        }
    };
    load();
    const timer = setInterval(load, reload);
    return () => {
        clearInterval(timer);
        abort.abort();
    };
}
