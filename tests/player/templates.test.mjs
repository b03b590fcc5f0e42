// The template stylesheet as a file: the colour rules are the eleven lines the tool rewrites, and
// the player's markup wears their classes. (That a module the core saves plays is the
// player-authored test's; that its page files keep what the author typed is AuthoredModules';
// the help's pages are the help tests'.)
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
});
