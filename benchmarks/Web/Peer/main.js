// The console's dashboard and a project's log, written by hand for browsers. It is what the console in a
// browser is held against, and no part of it.
import { showDashboard } from './dashboard.js';
import { showLogs } from './logs.js';

navigator.serviceWorker?.register('service-worker.js');

const pages = { dashboard: document.getElementById('dashboard'), logs: document.getElementById('logs') };
let leave = () => {};

// #/projects/ID/logs is a project's log, all else the dashboard.
const route = () => {
    leave();
    const project = /^#\/projects\/([^/]+)\/logs$/.exec(location.hash)?.[1];
    pages.dashboard.hidden = Boolean(project);
    pages.logs.hidden = !project;
    document.getElementById('title').textContent = project ? 'Logs' : 'Dashboard';
    leave = project ? showLogs(pages.logs, project) : showDashboard(pages.dashboard);
};
addEventListener('hashchange', route);
route();
