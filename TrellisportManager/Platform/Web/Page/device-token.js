// What a service has to know to send messages here, for the page and for its service worker.
'use strict';

// Asks the browser for an address, and gives it with its keys as JSON. Rejects when there is none.
globalThis.deviceToken = async ({ pushManager }) => {
    const reply = await fetch('push-key', { cache: 'no-cache', credentials: 'omit' });
    if (!reply.ok) {
        throw new Error(`the service has no key for messages (${reply.status})`);
    }
    const key = Uint8Array.from(
        atob((await reply.text()).trim().replaceAll('-', '+').replaceAll('_', '/')),
        (letter) => letter.charCodeAt(0));
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
