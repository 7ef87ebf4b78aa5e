// Permission to notify, the address for messages, and what the service worker tells of them.
addToLibrary({
    // 1: granted, 0: not.
    trellisport_ask_permission: (number) => {
        const answer = (permission) =>
            _trellisport_permission(number, permission === 'granted' ? 1 : 0);
        if (!('Notification' in globalThis) || !('serviceWorker' in navigator)) {
            Promise.resolve('denied').then(answer);
            return;
        }
        const ask = () => Notification.requestPermission().catch(() => Notification.permission);
        // Half a second, in steps: a page that is busy takes them as late as it hears of the answer.
        let steps = 0;
        const step = () => {
            if (++steps < 10) {
                setTimeout(step, 50);
            }
        };
        setTimeout(step, 50);
        ask().then((permission) => {
            if (permission === 'granted' || Notification.permission !== 'default' || steps === 10) {
                answer(permission);
                return;
            }
            // Nobody answers at once: this browser asks only when something was touched.
            const stop = new AbortController();
            const again = () => {
                stop.abort();
                ask().then(answer);
            };
            ['pointerup', 'keydown'].forEach((event) =>
                window.addEventListener(event, again, { capture: true, signal: stop.signal }));
        });
    },

    trellisport_subscribe__deps: ['$giveText'],
    trellisport_subscribe: () => {
        // The service worker's registration: boot.js; the token: device-token.js.
        trellisportMessages.registered.then(() => navigator.serviceWorker.ready).then(deviceToken).then(
            (token) => {
                giveText(token);
                _trellisport_subscribed(1);
            },
            (problem) => {
                giveText(String(problem?.message ?? problem));
                _trellisport_subscribed(0);
            });
    },

    // How a message that arrives in front is presented is asked through a channel of its own.
    $presentations: 'new Map()',
    $lastPresentation: 0,

    trellisport_watch_messages__deps: [
        '$giveText', '$presentations', '$lastPresentation', 'trellisport_subscribe'],
    trellisport_watch_messages: () => {
        // What came before the program was there waits in the page (boot.js).
        globalThis.trellisportMessages?.deliverTo((event) => {
            if (typeof event.data?.opened === 'string') {
                giveText(event.data.opened);
                _trellisport_message_opened();
            } else if (event.data === 'address changed') {
                _trellisport_subscribe();
            } else if (typeof event.data?.arrived === 'string' && event.ports[0]) {
                const number = ++lastPresentation;
                presentations.set(number, event.ports[0]);
                giveText(event.data.arrived);
                _trellisport_message_arrived(number);
            }
        });
    },

    trellisport_present__deps: ['$presentations'],
    trellisport_present: (number, options) => {
        presentations.get(number)?.postMessage(options);
        presentations.delete(number);
    },
});
