// The template folders as files: the colour rules are the eleven lines the tool rewrites, and the
// page files and the help are what the player and the editor read. (That a module the core saves
// plays is the player-authored test's; that a save keeps the templates' scripts is SessionTest's.)
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { describe, test } from "node:test";
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
