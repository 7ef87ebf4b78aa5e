// Starts the program in the page, and the service worker beside it.
'use strict';

// What the service worker tells before the program can hear it is kept.
{
    const kept = [];
    let deliver = (event) => kept.push(event);
    navigator.serviceWorker?.addEventListener('message', (event) => deliver(event));
    navigator.serviceWorker?.startMessages();
    globalThis.trellisportMessages = {
        deliverTo: (receiver) => {
            deliver = receiver;
            kept.splice(0).forEach(receiver);
        },
    };
}

navigator.serviceWorker?.register('service-worker.js').catch((problem) => {
    console.warn(`without a service worker there are no messages: ${problem.message}`);
});

// Some browsers lay a phone's keyboard over the page and only say how much they leave of it.
{
    const fit = () => {
        document.documentElement.style.setProperty('--height', `${visualViewport.height}px`);
        window.scrollTo(0, 0);
    };
    globalThis.visualViewport?.addEventListener('resize', fit);
}

{
    const start = document.getElementById('start');
    const fail = (reason) => {
        start.hidden = false;
        start.textContent = 'The console could not be started. Load the page again; if that does not help, ' +
            `this browser may be too old for it. (${reason})`;
    };
    qtLoad({
        locateFile: (name) => document.querySelector(`link[as=fetch][href*="${name.split('.')[0]}"]`)?.href ?? name,
        qt: {
            containerElements: [document.getElementById('screen')],
            entryFunction: trellisport_manager_entry,
            onLoaded: () => {
                start.hidden = true;
            },
            onExit: ({ text, code, crashed }) => {
                if (crashed || code !== undefined) {
                    fail(text ?? `it ended with ${code}`);
                }
            },
        },
    }).catch((problem) => fail(problem.message ?? problem));
}
