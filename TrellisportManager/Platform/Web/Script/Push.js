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
        const asked = performance.now();
        Notification.requestPermission().then((permission) => {
            // No person refuses as quickly: this browser asks only when something was touched.
            const unseen = permission !== 'granted' && performance.now() - asked < 200;
            if (!unseen || Notification.permission === 'denied') {
                answer(permission);
                return;
            }
            const again = () => {
                stop.abort();
                Notification.requestPermission().then(answer);
            };
            const stop = new AbortController();
            ['pointerup', 'keydown'].forEach((event) =>
                window.addEventListener(event, again, { capture: true, signal: stop.signal }));
        });
    },

    trellisport_subscribe__deps: ['$giveText'],
    trellisport_subscribe: () => {
        const subscribe = async () => {
            const reply = await fetch('push-key', { cache: 'no-cache', credentials: 'omit' });
            if (!reply.ok) {
                throw new Error(`the service has no key for messages (${reply.status})`);
            }
            const key = Uint8Array.from(
                atob((await reply.text()).trim().replaceAll('-', '+').replaceAll('_', '/')),
                (letter) => letter.charCodeAt(0));
            const { pushManager } = await navigator.serviceWorker.ready;
            const options = { userVisibleOnly: true, applicationServerKey: key };
            const subscription = await pushManager.subscribe(options).catch(async (problem) => {
                // The service has another key than the one that this browser knows.
                const old = await pushManager.getSubscription();
                if (problem.name !== 'InvalidStateError' || !old) {
                    throw problem;
                }
                await old.unsubscribe();
                return pushManager.subscribe(options);
            });
            const { endpoint, keys } = subscription.toJSON();
            return JSON.stringify({ auth: keys.auth, endpoint, p256dh: keys.p256dh });
        };
        subscribe().then(
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

    trellisport_watch_messages__deps: ['$giveText', '$presentations', '$lastPresentation'],
    trellisport_watch_messages: () => {
        // What came before the program was there waits in the page (boot.js).
        globalThis.trellisportMessages?.deliverTo((event) => {
            if (typeof event.data?.opened === 'string') {
                giveText(event.data.opened);
                _trellisport_message_opened();
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
