// Reports the player's two budgets: the bytes it adds to a module (scripts, styles, pictures;
// not the author's content) and how soon the first page of a 50-page lesson is visible in
// headless Chromium over loopback HTTP. Run: node bench/player-budget.mjs [DIST]
import fs from "node:fs";
import path from "node:path";
import { fileURLToPath } from "node:url";

const root = path.resolve(path.dirname(fileURLToPath(import.meta.url)), "..");
if (process.argv[2]) process.env.LUMORA_DIST = path.resolve(process.argv[2]);
const H = await import(path.join(root, "tests/player/support/harness.mjs"));

const PLAYER = /^(scripts\/player-.*\.js|css\/.*\.css|images\/.*|[a-z]+frameset\.html)$/;
function playerBytes(dir, rel = "") {
  let total = 0;
  for (const e of fs.readdirSync(path.join(dir, rel), { withFileTypes: true })) {
    const name = rel ? `${rel}/${e.name}` : e.name;
    if (e.isDirectory()) total += playerBytes(dir, name);
    else if (PLAYER.test(name)) total += fs.statSync(path.join(dir, name)).size;
  }
  return total;
}

for (const type of ["Lesson", "Evaluation", "Survey"]) {
  const bytes = playerBytes(path.join(H.templates, type));
  console.log(`${type.padEnd(10)} player files: ${(bytes / 1024).toFixed(1)} KB (budget 100 KB) ${bytes <= 102400 ? "ok" : "OVER"}`);
}

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

const server = await H.serve({ "/": dir });
const browser = await H.launch();
const times = [];
for (let run = 0; run < 7; run++) {
  const page = await browser.context.newPage();
  await page.goto(`${server.base}/lessonframeset.html`);
  await page.frameLocator("#lumContent").locator(".lumActivity").waitFor({ state: "visible" });
  // From the start of the frameset's navigation to the page's first contentful paint, both
  // measured by the browser itself (no test-driver round trips in the number).
  const ms = await H.waitFor(() => page.evaluate(() => {
    const w = document.getElementById("lumContent").contentWindow;
    const paint = w.performance.getEntriesByName("first-contentful-paint")[0];
    return paint && w.performance.timeOrigin + paint.startTime - performance.timeOrigin;
  }));
  times.push(Math.round(ms));
  await page.close();
}
await browser.close();
await server.close();
fs.rmSync(dir, { recursive: true, force: true });
times.sort((a, b) => a - b);
const median = times[Math.floor(times.length / 2)];
console.log(`First page of a 50-page lesson visible: median ${median} ms over ${times.length} loads (min ${times[0]}, max ${times.at(-1)}; budget 300 ms) ${median <= 300 ? "ok" : "OVER"}`);
