// The offline help as its reader meets it, served as the help viewer serves it: every page, a
// glossary pop-up and an answered activity pass axe-core's WCAG 2.1 A and AA rules, and every
// picture on every page loads and shows at its size.
import assert from "node:assert/strict";
import fs from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";

const axeSource = fs.readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const help = H.dist ? path.join(H.dist, "Help") : "";
const RULES = { runOnly: { type: "tag", values: ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa"] } };

// axe-core's violations in one frame, one line each: the rule and the elements it found.
async function violations(frame) {
  if (!(await frame.evaluate(() => typeof window.axe !== "undefined"))) await frame.addScriptTag({ content: axeSource });
  const result = await frame.evaluate((rules) => window.axe.run(document, rules), RULES);
  return result.violations.map((v) => `${v.id}: ${v.nodes.map((n) => n.target.join(" ")).join(", ")}`);
}

describe("the offline help", { skip: !(help && fs.existsSync(help)) && "the help is not staged" }, () => {
  let browser, server;
  before(async () => {
    browser = await H.launch();
    server = await H.serve({ "/": help });
  });
  after(async () => {
    await browser?.close();
    await server?.close();
  });

  test("every page, a glossary pop-up and an answered activity: no accessibility violation; pictures load at their size", async () => {
    const pages = H.readModule(help, "Lesson").objLessonModule.pages.length;
    const { page, errors } = await H.open(browser, `${server.base}/lessonFrameset.html`);
    const content = async () => (await page.locator("#lumContent").elementHandle()).contentFrame();
    const found = [];
    for (let i = 1; i <= pages; i++) {
      await H.onPage(page, i, pages);
      // The page number changes before the frame has navigated: wait for the page's own file,
      // loaded, or the checks below would run in the document that is going away.
      let frame;
      await H.waitFor(async () => {
        frame = await content();
        return !!frame && frame.url().endsWith(`/page${i - 1}.html`) && (await frame.evaluate(() => document.readyState).catch(() => "")) === "complete";
      }, 15000);
      if (i === 1) found.push(...(await violations(page.mainFrame())).map((v) => `frameset: ${v}`));
      found.push(...(await violations(frame)).map((v) => `page ${i}: ${v}`));
      const broken = await frame.evaluate(() => [...document.images].filter((im) => !im.complete || !im.naturalWidth).map((im) => im.src));
      assert.deepEqual(broken, [], `page ${i}: pictures that do not load`);
      // A captioned picture's table is one pixel wide; the picture must still show at its size.
      const squeezed = await frame.evaluate(() => [...document.images].filter((im) => im.clientWidth < Math.min(im.naturalWidth, 300)).map((im) => im.src));
      assert.deepEqual(squeezed, [], `page ${i}: pictures shown smaller than they are`);

      const term = frame.locator("a[name^=term]").first();
      if (i === 1 && (await term.count())) {
        await term.click();
        await frame.getByRole("dialog").waitFor();
        found.push(...(await violations(frame)).map((v) => `glossary pop-up: ${v}`));
        await page.keyboard.press("Escape");
      }
      const activity = frame.locator(".lumActivity").first();
      if (await activity.count()) {
        await activity.locator("input").first().check();
        await activity.getByRole("button", { name: "Check answer" }).click();
        await activity.locator(".lumFeedback.lumRight, .lumFeedback.lumWrong").waitFor();
        found.push(...(await violations(frame)).map((v) => `page ${i}, activity answered: ${v}`));
      }
      if (i < pages) await page.locator("#lumNext").click();
    }
    assert.deepEqual(found, []);
    assert.deepEqual(errors, []);
  });
});
