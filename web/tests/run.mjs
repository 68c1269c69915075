// Runs the tests of the page that VORKA_PAGE names; status 77 says that they were skipped, and why.

import { spawnSync } from 'node:child_process';
import { existsSync, readdirSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const oldestNode = 20;

function reasonToSkip() {
  if (!process.env.VORKA_PAGE) return 'VORKA_PAGE names no page: scripts/test --web builds one and runs these tests';
  if (!existsSync(join(process.env.VORKA_PAGE, 'vorka.wasm'))) return `there is no page in ${process.env.VORKA_PAGE}`;
  if (!existsSync(process.env.VORKA_CHROMIUM ?? '/usr/bin/chromium')) return 'there is no Chromium';
  if (!existsSync(join(here, '../node_modules/playwright-core'))) return 'npm ci has not been run in web/';
  if (Number(process.versions.node.split('.')[0]) < oldestNode) return `Node ${process.versions.node} is too old for playwright`;
  return null;
}

const reason = reasonToSkip();
if (reason) {
  console.log(`skipped: ${reason}`);
  process.exit(77);
}
const files = readdirSync(here).filter((name) => name.endsWith('_test.mjs')).map((name) => join(here, name));
const { status } = spawnSync(process.execPath, ['--test', '--test-concurrency=1', ...files], { stdio: 'inherit' });
process.exit(status ?? 1);
