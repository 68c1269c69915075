// Keeps the page for use without a network, and isolates it from other origins on hosts that send no such headers: only
// then may the engine wait for its next line. web/assemble.mjs fills in the files and their version.

// An origin may hold other pages too, whose caches are none of ours.
const ours = `vorka ${registration.scope} `;
const version = `${ours}@VERSION@`;
const files = ['@FILES@'];

self.addEventListener('install', (event) => {
  event.waitUntil((async () => {
    const cache = await caches.open(version);
    await cache.addAll(files.map((file) => new Request(file, { cache: 'reload' })));
    // An open page goes on with the files it began with: a new version waits until the page is closed.
    if (!registration.active) await self.skipWaiting();
  })());
});

self.addEventListener('activate', (event) => {
  event.waitUntil((async () => {
    for (const name of await caches.keys()) if (name.startsWith(ours) && name !== version) await caches.delete(name);
    await self.clients.claim();
  })());
});

function isolated(response) {
  const headers = new Headers(response.headers);
  headers.set('Cross-Origin-Opener-Policy', 'same-origin');
  headers.set('Cross-Origin-Embedder-Policy', 'require-corp');
  return new Response(response.body, { status: response.status, statusText: response.statusText, headers });
}

self.addEventListener('fetch', (event) => {
  if (event.request.method !== 'GET' || new URL(event.request.url).origin !== location.origin) return;
  event.respondWith((async () => {
    const cache = await caches.open(version);
    const kept = await cache.match(event.request, { ignoreSearch: true });
    return isolated(kept ?? await fetch(event.request));
  })());
});
