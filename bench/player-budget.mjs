// Reports the player's budgets: the bytes it adds to each package (scripts, styles, pictures;
// not the author's content), per format and module type, with the packages' sizes; and how soon
// the first page of a 50-page lesson is visible in headless Chromium over loopback HTTP, on its
// own and launched by each kind of LMS. Run: node bench/player-budget.mjs [DIST] [--no-validators]
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

const root = path.resolve(path.dirname(fileURLToPath(import.meta.url)), "..");
const distArg = process.argv.slice(2).find((a) => !a.startsWith("--"));
if (distArg) process.env.LUMORA_DIST = path.resolve(distArg);
const H = await import(path.join(root, "tests/player/support/harness.mjs"));
const LMS = await import(path.join(root, "tests/player/support/lms.mjs"));
const CMI5 = await import(path.join(root, "tests/player/support/cmi5.mjs"));

// The sample modules packaged by lumora-cli in every format: the zip's size and the bytes of
// its player files (the entries' own sizes, as unzip lists them).
const PLAYER = /^(scripts\/player-.*\.js|css\/.*\.css|images\/.*|[a-z]+frameset\.html)$/;
const ws = fs.mkdtempSync(path.join(os.tmpdir(), "lumora-budget-"));
const cli = (...args) => execFileSync(path.join(H.dist, "lumora-cli"), ["--workspace", ws, "--yes", ...args], { cwd: ws, stdio: "pipe" });
for (const type of ["Lesson", "Evaluation", "Survey"]) {
  cli("new", type, type);
  cli("save", type);
  for (const format of ["scorm12", "scorm2004", "cmi5"]) {
    cli("package", type, "--format", format);
    const zip = path.join(ws, `${type}-${format}.zip`);
    let player = 0;
    for (const line of execFileSync("unzip", ["-Zl", zip], { encoding: "utf8" }).split("\n")) {
      const f = line.trim().split(/\s+/);
      if (f.length >= 10 && PLAYER.test(f.at(-1))) player += +f[3];
    }
    console.log(`${type.padEnd(10)} ${format.padEnd(9)} package ${(fs.statSync(zip).size / 1024).toFixed(1)} KB, ` +
      `player files ${(player / 1024).toFixed(1)} KB (budget 100 KB) ${player <= 102400 ? "ok" : "OVER"}`);
  }
}
fs.rmSync(ws, { recursive: true, force: true });

// A 50-page lesson, each page with text and one of ten activities, written in the lines the
// tool's writer writes (CR LF, one statement a line) into a copy of the Lesson template.
const dir = H.copyModule("Lesson");
const CRLF = "\r\n";
const skeleton = fs.readFileSync(path.join(dir, "page0.html"), "utf8").split(/\r?\n/);
const info = ['var modTitle = "Fifty pages";', "var objLessonModule = new objLesson(window.modTitle);",
  'var copyright = "c";', "var useSCORM = true;"];
for (let i = 0; i < 50; i++) {
  const content = `<H2>Page ${i + 1}</H2>${CRLF}<P>${"Text of the page. ".repeat(40)}</P>${CRLF}` +
    `<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(${(i % 10) + 1}));</SCRIPT>`;
  const lines = [];
  let copying = true;
  for (const line of skeleton) {
    if (line.includes("</LUMApageContent>")) copying = true;
    if (copying) lines.push(line);
    if (line.includes("<LUMApageContent>")) { lines.push(content); copying = false; }
  }
  fs.writeFileSync(path.join(dir, `page${i}.html`), lines.join(CRLF));
  info.push(`objLessonModule.addPage(objLessonModule.pages.length, "Page ${i + 1}");`);
}
info.push("", "var intNumPages = objLessonModule.pages.length;", "var topPage = intNumPages - 1;");
fs.writeFileSync(path.join(dir, "scripts/inc_ModuleInfo.js"), info.join(CRLF) + CRLF);
const qa = [];
for (let i = 0; i < 10; i++) {
  qa.push("ActID = arrActObjects.length;", "thisID = ActID+1;",
    'arrActObjects[ActID] = new objActQuestion(thisID, "radio");',
    `arrActObjects[ActID].actQuestion = "Question ${i + 1}";`);
  ["Right", "Wrong", "Also wrong"].forEach((text, j) => qa.push(
    "thisOpt = arrActObjects[ActID].actDistractors.length;",
    `arrActObjects[ActID].addDistractor(${j === 0});`,
    `arrActObjects[ActID].actDistractors[thisOpt].txtValue = "${j}";`,
    `arrActObjects[ActID].actDistractors[thisOpt].txtDisplay = "${text}";`));
  qa.push('arrActObjects[ActID].actRationale = "Because.";');
}
fs.writeFileSync(path.join(dir, "scripts/inc_QAndA.js"), qa.join(CRLF) + CRLF);
fs.writeFileSync(path.join(dir, "scripts/inc_Glossary.js"), "");

// The first page's first contentful paint, measured by the browser itself from the start of the
// module's launch (the frameset's navigation) and from the top page's (the LMS's page, which
// loads its own run-time first, or the frameset when it is the top).
async function firstPage(browser, url, frameset) {
  const page = await browser.context.newPage();
  const cdp = await browser.context.newCDPSession(page);
  await cdp.send("Network.clearBrowserCache");
  await page.goto(url);
  const frame = () => (frameset(page).frameLocator ? frameset(page) : page).frameLocator("#lumContent");
  await frame().locator(".lumActivity").waitFor({ state: "visible" });
  const ms = await H.waitFor(() => page.evaluate(() => {
    const lesson = document.getElementById("sco") ? document.getElementById("sco").contentWindow : window;
    const w = lesson.document.getElementById("lumContent").contentWindow;
    const paint = w.performance.getEntriesByName("first-contentful-paint")[0];
    const at = paint && w.performance.timeOrigin + paint.startTime;
    return paint && [at - performance.timeOrigin, at - lesson.performance.timeOrigin];
  }));
  await page.close();
  return ms.map(Math.round);
}

// Served as a web server serves a package the LMS unpacked an hour ago (files with their
// Last-Modified time), each load with an empty browser cache: what the first page reuses of the
// frameset's files it reuses within the one launch. --no-validators serves them as the tests do.
H.serving.lastModified = !process.argv.includes("--no-validators");
const hourAgo = new Date(Date.now() - 3600e3);
for (const f of fs.readdirSync(dir, { recursive: true })) fs.utimesSync(path.join(dir, f), hourAgo, hourAgo);
const server = await H.serve({ "/": dir });
const scorm = await LMS.scormServer(dir);
const hacp = await H.serve({ "/m/": dir }, LMS.hacpHandler({ requests: [], getParam: LMS.getParamData() }));
const lms = await CMI5.cmi5Lms();
const sco = (page) => page.frameLocator("#sco");
const top = (page) => page;
const launches = {
  "on its own": [() => `${server.base}/lessonframeset.html`, top],
  "SCORM 1.2": [() => LMS.lmsUrl(scorm.base, "lessonframeset.html", LMS.firstLaunch()), sco],
  "SCORM 2004": [() => LMS.lmsUrl(scorm.base, "lessonframeset.html", LMS.firstLaunch2004(), "", "lms2004.html"), sco],
  "AICC": [() => `${hacp.base}/m/lessonframeset.html?aicc_sid=S1&aicc_url=${hacp.base}/hacp`, top],
  "cmi5": [() => lms.launchUrl(`${server.base}/lessonframeset.html`), top],
};
// The launches take turns, so a busy moment of the machine falls on all of them alike.
const browser = await H.launch();
const runs = {};
for (let run = 0; run < 15; run++)
  for (const [what, [url, frameset]] of Object.entries(launches))
    (runs[what] ??= []).push(await firstPage(browser, url(), frameset));
for (const [what, times] of Object.entries(runs)) {
  const median = (i) => times.map((r) => r[i]).sort((a, b) => a - b)[times.length >> 1];
  console.log(`First page of a 50-page lesson visible, ${what}: median ${median(1)} ms from the module's launch, ` +
    `${median(0)} ms from the top page's start, over ${times.length} loads (budget 300 ms) ${median(1) <= 300 ? "ok" : "OVER"}`);
}
await browser.close();
for (const s of [server, scorm, hacp, lms]) await s.close();
fs.rmSync(dir, { recursive: true, force: true });
