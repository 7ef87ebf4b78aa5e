// Starts the program in the page, and the service worker beside it.
'use strict';

// Only a browser that understands this gets here.
document.getElementById('old').remove();

// The service worker asks for all of the program: once it is there, so that it is not sent twice.
let programIsThere = null;
const registered = new Promise((resolve) => {
    programIsThere = resolve;
}).then(() => navigator.serviceWorker?.register('service-worker.js')
    ?? Promise.reject(new Error('this browser has no service workers')));
registered.catch((problem) => {
    console.warn(`without a service worker there are no messages: ${problem.message}`);
});

// What the service worker tells before the program can hear it is kept.
{
    const kept = [];
    let deliver = (event) => kept.push(event);
    navigator.serviceWorker?.addEventListener('message', (event) => deliver(event));
    navigator.serviceWorker?.startMessages();
    // It then hands over what was tapped, and counts the badge anew.
    const listen = () => navigator.serviceWorker?.ready.then(({ active }) => active.postMessage('listening'));
    globalThis.trellisportMessages = {
        registered,
        deliverTo: (receiver) => {
            deliver = (event) => (event.data === 'tapped' ? listen() : receiver(event));
            kept.splice(0).forEach(deliver);
            listen();
            document.addEventListener('visibilitychange', () => {
                if (document.visibilityState === 'visible') {
                    listen();
                }
            });
        },
    };
}

// Some browsers lay a phone's keyboard over the page and only say how much they leave of it.
{
    const fit = () => {
        // What is enlarged shows less of the page, but leaves as much of it.
        const { height, scale } = visualViewport;
        document.documentElement.style.setProperty('--height', `${height * scale}px`);
        window.scrollTo(0, 0);
    };
    globalThis.visualViewport?.addEventListener('resize', fit);
}

// A new version that waits for other pages to end takes over while nothing is shown yet. Gives whether it
// did; those other pages have loaded what they need. Meanwhile this page asks for nothing: a request that
// comes while the one before is stopped starts that one again, and browsers let it stay then.
async function takeOver() {
    const workers = navigator.serviceWorker;
    const { waiting } = await workers?.getRegistration() ?? {};
    if (!waiting || !workers.controller) {
        return false;
    }
    const tookOver = new Promise((resolve) => {
        workers.addEventListener('controllerchange', () => resolve(true), { once: true });
        // The one before has something to do: the next time, then.
        setTimeout(() => resolve(false), 3000);
        workers.addEventListener('message', ({ data }) => {
            if (data === 'tapped') {
                resolve(false);
            }
        });
    });
    workers.controller.postMessage('starting');
    // It does not take over while the one before still hands out the program, of which the page reads
    // no more than it must: what it asked for by itself.
    const { href } = document.querySelector('link[as=fetch]');
    const isRead = fetch(href, { credentials: 'same-origin' }).then((reply) => reply.arrayBuffer()).catch(() => {});
    await Promise.race([isRead, tookOver]);
    waiting.postMessage('take over');
    return tookOver;
}

async function start() {
    if (await takeOver().catch(() => false)) {
        location.reload();
        return;
    }
    document.head.append(document.getElementById('asked-for-later').content);
    const program = await qtLoad({
        locateFile: (name) => document.querySelector(`link[as=fetch][href*="${name.split('.')[0]}"]`)?.href ?? name,
        noInitialRun: true,
        qt: {
            containerElements: [document.getElementById('screen')],
            entryFunction: trellisport_manager_entry,
            onLoaded: programIsThere,
            onExit: ({ text, code }) => showFailure(text ?? `it ended with ${code}`),
        },
    });
    // It goes on when this returns, unless its main function gave something.
    const status = program.callMain([]);
    if (status !== undefined) {
        showFailure(`it ended with ${status}`);
    }
}

let failure = '';

// The first reason is the one that counts: others follow from it.
function showFailure(reason) {
    // The service worker may know of a newer program.
    programIsThere();
    failure ||= reason;
    const canDraw = ['webgl2', 'webgl'].some((kind) => document.createElement('canvas').getContext(kind));
    const place = document.getElementById('start');
    place.hidden = false;
    place.textContent = 'The console could not be started. Load the page again; if that does not help, ' +
        `this browser may be too old for it. (${failure || 'it ended'}${canDraw ? '' : '; there is no WebGL'})`;
}

start().catch((problem) => showFailure(problem?.message ?? problem));
