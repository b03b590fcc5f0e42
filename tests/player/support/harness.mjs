// Shared set-up of the player tests: Debian's Chromium through playwright-core, a loopback
// HTTP server over a folder, module folders copied from the staged templates, and the module
// data read the way the browser reads it (the player's constructors plus the inc_*.js files).
import fs from "node:fs";
import http from "node:http";
import os from "node:os";
import path from "node:path";
import vm from "node:vm";
import { fileURLToPath, pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

const here = path.dirname(fileURLToPath(import.meta.url));
export const repo = path.resolve(here, "../../..");
export const dist = process.env.LUMORA_DIST ? path.resolve(process.env.LUMORA_DIST) : "";
// The staged installation when there is one, else the share folder it is staged from.
export const templates = dist && fs.existsSync(path.join(dist, "Templates")) ? path.join(dist, "Templates") : path.join(repo, "share", "Templates");
export const FRAMESET = { Lesson: "lessonframeset.html", Evaluation: "poolframeset.html", Survey: "surveyframeset.html" };

export async function launch() {
  const userDir = fs.mkdtempSync(path.join(os.tmpdir(), "lumora-chromium-"));
  const browser = await chromium.launchPersistentContext(userDir, {
    executablePath: "/usr/bin/chromium",
    headless: true,
    args: ["--no-sandbox", "--disable-gpu", "--disable-background-networking", "--disable-component-update",
      "--disable-sync", "--no-first-run"],
    viewport: { width: 1280, height: 800 },
  });
  const close = async () => {
    await browser.close();
    fs.rmSync(userDir, { recursive: true, force: true });
  };
  return { context: browser, close };
}

// A fresh copy of a template (or any module folder) in a temporary workspace.
export function copyModule(type, from = path.join(templates, type)) {
  const dir = fs.mkdtempSync(path.join(os.tmpdir(), `lumora-${type}-`));
  fs.cpSync(from, dir, { recursive: true });
  return dir;
}

const TYPES = { ".html": "text/html; charset=utf-8", ".js": "text/javascript; charset=utf-8", ".css": "text/css",
  ".png": "image/png", ".gif": "image/gif" };

// Files go out without validators, so a test's every load reads the folder as it is now; the
// budget script turns Last-Modified on, as a web server serving an unpacked package sends it.
export const serving = { lastModified: false };

// Serves `roots` (url prefix -> folder) on 127.0.0.1 and hands other requests to `extra`.
export async function serve(roots, extra) {
  const server = http.createServer((req, res) => {
    const url = new URL(req.url, "http://x");
    for (const [prefix, dir] of Object.entries(roots)) {
      if (!url.pathname.startsWith(prefix)) continue;
      const file = path.join(dir, decodeURIComponent(url.pathname.substring(prefix.length)));
      if (!file.startsWith(dir) || !fs.existsSync(file) || fs.statSync(file).isDirectory()) break;
      const headers = { "Content-Type": TYPES[path.extname(file)] ?? "application/octet-stream" };
      if (serving.lastModified) headers["Last-Modified"] = fs.statSync(file).mtime.toUTCString();
      res.writeHead(200, headers);
      return fs.createReadStream(file).pipe(res);
    }
    if (extra && extra(req, res, url) !== false) return;
    res.writeHead(404);
    res.end("not found");
  });
  await new Promise((done) => server.listen(0, "127.0.0.1", done));
  const base = `http://127.0.0.1:${server.address().port}`;
  return { base, close: () => new Promise((done) => { server.closeAllConnections?.(); server.close(done); }) };
}

// Runs `body(keep)` and closes what it kept (pages, servers, test LMSs), last first, also when
// the body fails: a server left open would keep the test run from ending.
export async function closing(body) {
  const kept = [];
  try {
    return await body((thing) => (kept.push(thing), thing));
  } finally {
    for (const thing of kept.reverse()) await thing.close().catch(() => {});
  }
}

export const fileUrl = (dir, name) => pathToFileURL(path.join(dir, name)).href;

// Runs the player's constructors and the module's scripts the way the frameset does.
export function readModule(dir, type) {
  const ctx = vm.createContext({ Math, window: {} });
  ctx.window = ctx;
  ctx.Math = Object.create(Math);
  ctx.Math.random = () => 0.999; // keep the written order: shuffle() with this leaves lists as they are
  const scriptsDir = path.join(dir, "scripts");
  const files = { Lesson: ["inc_ModuleInfo.js", "inc_Glossary.js", "inc_QAndA.js"], Evaluation: ["inc_Questions.js"],
    Survey: ["inc_Objectives.js"] }[type];
  for (const f of ["player-core.js", ...files]) vm.runInContext(fs.readFileSync(path.join(scriptsDir, f), "utf8"), ctx);
  return ctx;
}

// A new page that records its uncaught errors, so a test can assert that the learner never saw
// one; opened at `url` when given.
export async function open(browser, url) {
  const page = await browser.context.newPage();
  const errors = [];
  page.on("pageerror", (e) => errors.push(String(e)));
  if (url) await page.goto(url);
  return { page, errors };
}

// The evaluation's questions by their text as the learner reads it (without markup), as the
// player reads them from the module's scripts.
export const answerKey = (dir) => new Map(readModule(dir, "Evaluation").arrQuestions
  .map((q) => [q.evalQuestion.replace(/<[^>]*>/g, ""), q]));

// Ticks the right options of the i-th question shown, or only its first wrong one.
export async function answer(qs, key, i, right = true) {
  const q = qs.nth(i);
  const item = key.get(await q.locator(".lumQuestion").textContent());
  const picks = right ? item.evalDistractors.filter((d) => d.correct) : [item.evalDistractors.find((d) => !d.correct)];
  for (const o of picks) await q.getByLabel(o.txtDisplay, { exact: true }).check();
  return item;
}

// Waits for the frameset (a page or a frame locator) to show page n of `of`.
export const onPage = (frame, n, of = 3) => frame.locator("#lumPageNum", { hasText: `Page ${n} of ${of}` }).waitFor();

// Goes on to the next page, page n, and waits for it.
export async function next(frame, n) {
  await frame.locator("#lumNext").click();
  await onPage(frame, n);
}

export async function waitFor(fn, timeout = 5000) {
  const end = Date.now() + timeout;
  for (;;) {
    const v = await fn();
    if (v) return v;
    if (Date.now() > end) throw new Error("timed out waiting for " + fn);
    await new Promise((r) => setTimeout(r, 25));
  }
}
