// The template folders as files: the colour rules are the eleven lines the tool rewrites, and a
// module written by the core (lumora-cli, when the staged installation has it) plays.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";

const TYPES = ["Lesson", "Evaluation", "Survey"];
const read = (...p) => fs.readFileSync(path.join(H.templates, ...p), "utf8");

describe("template files", () => {
  test("the stylesheet holds the eleven colour rules with the default colours, and the player uses them", () => {
    const rules = [
      "a:link {color: #000099;}", "a:visited {color: #336699;}", ".conTable, .popupTable {background-color: #FFFFFF;}",
      ".popupTitle, .moduleTitle {color: #FFFFFF;}", ".popupTitle, .moduleTable {background-color: #336699;}",
      ".moduleTable, .popupBorder, .popupTable {border-color: #336699;}", ".navPageNumberRow {background-color: #FFCC66;}",
      ".outlineTitleRow {background-color: #FFFFCC;}", ".navPageNumberRow, .pageLink {color: #000000 ! important;}",
      ".outlineTitleRow, .titleLink {color: #000000 ! important;}", ".copyRight {color: #666666;}",
    ];
    const lines = read("Lesson", "css", "camstyle.css").split("\r\n");
    for (const r of rules) assert.ok(lines.includes(r), r);
    const markup = TYPES.map((t) => fs.readdirSync(path.join(H.templates, t)).filter((f) => f.endsWith(".html"))
      .map((f) => read(t, f)).join("")).join("") + read("Lesson", "scripts", "player-lesson.js") + read("Lesson", "scripts", "player-activity.js");
    for (const [, cls] of rules.join(" ").matchAll(/\.(\w+)/g))
      assert.match(markup, new RegExp(`class(Name = |=)"[^"]*\\b${cls}\\b`), cls);
  });

  test("page files hold their content between the two markers; the help is a lesson module", () => {
    for (const f of fs.readdirSync(path.join(H.templates, "Lesson")).filter((n) => /^page\d+\.html$/.test(n))) {
      const lines = read("Lesson", f).split("\r\n");
      const start = lines.findIndex((l) => l.includes("<LUMApageContent>"));
      assert.ok(start >= 0 && lines.findIndex((l) => l.includes("</LUMApageContent>")) > start + 1, f);
      assert.ok(lines.includes('<html lang="en">'), f);
    }
    assert.equal(fs.readFileSync(path.join(H.templates, "version"), "utf8").trim(), "1.0");
    const help = path.join(H.templates, "..", "Help");
    const ctx = H.readModule(help, "Lesson");
    assert.ok(ctx.objLessonModule.pages.length >= 4);
    for (let i = 0; i < ctx.objLessonModule.pages.length; i++) assert.ok(fs.existsSync(path.join(help, `page${i}.html`)));
  });
});

const cli = H.dist && path.join(H.dist, "lumora-cli");
describe("modules written by the core", { skip: !(cli && fs.existsSync(cli)) && "lumora-cli is not staged" }, () => {
  let browser, ws;
  before(async () => {
    browser = await H.launch();
    ws = fs.mkdtempSync(path.join(os.tmpdir(), "lumora-ws-"));
  });
  after(async () => {
    await browser?.close();
    fs.rmSync(ws, { recursive: true, force: true });
  });
  const run = (...args) => execFileSync(cli, ["--workspace", ws, "--yes", ...args], { stdio: "pipe" });

  for (const type of TYPES) {
    // That a save leaves the template's scripts as they are is the core's test (SessionTest).
    test(`${type}: new and save without SCORM, and the saved module plays from disk`, async () => {
      run("new", type, `m${type}`);
      run("save", `m${type}`, "--non-scorm");
      const dir = path.join(ws, `m${type}`);
      const { page, errors } = await H.open(browser, H.fileUrl(dir, H.FRAMESET[type]));
      if (type === "Lesson") {
        await page.locator("#lumPageNum", { hasText: "Page 1 of 3" }).waitFor();
        await page.locator("#lumNext").click();
        await page.frameLocator("#lumContent").locator(".lumActivity").waitFor();
      } else {
        await page.locator(".lumQ").first().waitFor();
      }
      assert.equal(await page.evaluate(() => String(window.useSCORM)), "false");
      assert.deepEqual(errors, []);
      await page.close();
    });
  }
});
