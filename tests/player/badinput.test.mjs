// Modules whose scripts hold odd values still run, and the learner never meets a script error.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import * as W from "./support/writer.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

const opts = (...texts) => texts.map((t, i) => ({ text: t, correct: i === 0 }));

describe("bad input", () => {
  test("evaluation: more questions asked than the pool holds, an unknown type, a question without options", async () => {
    const dir = H.copyModule("Evaluation");
    W.writeFiles(dir, W.evaluationScripts({
      title: 'Odd "quoted" title', copyright: "", intNumQuestions: 40, shuffle: false,
      questions: [
        { type: "dropdown", text: "Unknown type", options: opts("A", "B") },
        { type: "radio", text: "Fine", options: opts("Yes", "No") },
      ],
    }));
    // An item whose options never arrive (a hand-edited file).
    fs.appendFileSync(path.join(dir, "scripts/inc_Questions.js"),
      'arrQuestions[arrQuestions.length] = new objEvalQuestion(arrQuestions.length + 1, "radio");\r\n');
    const page = await browser.context.newPage();
    const errors = H.watchErrors(page);
    await page.goto(H.fileUrl(dir, "poolframeset.html"));
    await page.locator(".lumQ").first().waitFor();
    assert.equal(await page.locator("#lumTitle").textContent(), 'Odd "quoted" title');
    assert.equal(await page.locator(".lumQ").count(), 2);
    await page.locator(".lumQ").nth(0).getByLabel("A", { exact: true }).check();
    await page.locator(".lumQ").nth(1).getByLabel("No", { exact: true }).check();
    await page.getByRole("button", { name: "Submit" }).click();
    await page.locator(".lumScore", { hasText: "50%" }).waitFor();
    assert.deepEqual(errors, []);
    await page.close();
  });

  test("evaluation with an empty pool says so", async () => {
    const dir = H.copyModule("Evaluation");
    W.writeFiles(dir, W.evaluationScripts({ title: "Empty", copyright: "c", intNumQuestions: 3, questions: [] }));
    const page = await browser.context.newPage();
    const errors = H.watchErrors(page);
    await page.goto(H.fileUrl(dir, "poolframeset.html"));
    await page.locator(".lumMissing").waitFor();
    assert.deepEqual(errors, []);
    await page.close();
  });

  test("lesson: a missing page file, an activity that does not exist, a term that does not exist", async () => {
    const dir = H.copyModule("Lesson");
    const skeleton = fs.readFileSync(path.join(dir, "page0.html"), "utf8");
    const pages = [
      { title: "One", content: "<P>One</P>\r\n<SCRIPT language=JavaScript>document.write(parentRef.writeActivityHTML(7));</SCRIPT>" },
      { title: "Gone", content: "" },
      { title: "Three", content: `<P><a href="#term9" name="term9" onClick="parentRef.showGlossaryPopup('9', 240, 180);" border=0>nine</a></P>` },
    ];
    W.writeFiles(dir, W.lessonScripts({ title: "Odd lesson", copyright: "c", pages, glossary: [], activities: [
      { type: "radio", text: "No options at all", options: [] }] }));
    W.writeLessonPages(dir, skeleton, pages);
    fs.rmSync(path.join(dir, "page1.html"));
    const server = await H.serve({ "/": dir });
    const page = await browser.context.newPage();
    const errors = H.watchErrors(page);
    await page.goto(`${server.base}/lessonframeset.html`);
    const frame = page.frameLocator("#lumContent");
    await frame.locator(".lumMissing", { hasText: "Activity 7 is not available." }).waitFor();
    await page.locator("#lumNext").click();
    await page.locator("#lumPageNum", { hasText: "Page 2 of 3" }).waitFor();
    await page.locator("#lumNext").click();
    await page.locator("#lumPageNum", { hasText: "Page 3 of 3" }).waitFor();
    await frame.locator("a[name=term9]").click();
    await frame.getByRole("dialog").waitFor();
    assert.match(await frame.getByRole("dialog").textContent(), /not in the glossary/);
    await page.keyboard.press("Escape");
    assert.deepEqual(errors, []);
    await page.close();
    await server.close();
  });

  test("suspend data that does not fit the module is ignored", async () => {
    const dir = H.copyModule("Evaluation");
    const page = await browser.context.newPage();
    const errors = H.watchErrors(page);
    await page.addInitScript(() => {
      window.API = { LMSInitialize: () => "true", LMSFinish: () => "true", LMSCommit: () => "true",
        LMSGetLastError: () => "0", LMSSetValue: () => "true",
        LMSGetValue: (el) => ({ "cmi.suspend_data": "Ea~~~~", "cmi.core.lesson_status": "incomplete" })[el] ?? "" };
    });
    await page.goto(H.fileUrl(dir, "poolframeset.html"));
    await page.locator(".lumQ").first().waitFor();
    assert.equal(await page.locator(".lumQ").count(), 3);
    assert.equal(await page.locator(".lumQ input:checked").count(), 0);
    assert.deepEqual(errors, []);
    await page.close();
  });
});
