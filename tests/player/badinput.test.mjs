// Modules whose scripts hold odd values still run, and the learner never meets a script error.
// The odd modules are template copies with lines changed the way a hand edit would change them.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

const edit = (dir, file, change) => fs.writeFileSync(path.join(dir, file), change(fs.readFileSync(path.join(dir, file), "utf8")));

describe("bad input", () => {
  test("evaluation: odd values in its script, an empty pool, suspend data that does not fit", async () => {
    // A quoted title, more questions asked than the pool holds, an unknown type, a question
    // without options: the whole pool is asked, never the question without options.
    let dir = H.copyModule("Evaluation");
    edit(dir, "scripts/inc_Questions.js", (s) => s.replace('"Sample Evaluation"', '"Odd \\"quoted\\" title"')
      .replace("intNumQuestions = 3;", "intNumQuestions = 40;").replace('(thisID, "radio")', '(thisID, "dropdown")') +
      'arrQuestions[arrQuestions.length] = new objEvalQuestion(arrQuestions.length + 1, "radio");\r\n');
    const { page, errors } = await H.open(browser, H.fileUrl(dir, "poolframeset.html"));
    const qs = page.locator(".lumQ");
    await qs.first().waitFor();
    assert.equal(await page.locator("#lumTitle").textContent(), 'Odd "quoted" title');
    assert.equal(await qs.count(), 4);
    const key = H.answerKey(dir);
    for (let i = 0; i < 4; i++) await H.answer(qs, key, i, i !== 1);
    await page.getByRole("button", { name: "Submit" }).click();
    await page.locator(".lumScore", { hasText: "75%" }).waitFor();

    dir = H.copyModule("Evaluation");
    edit(dir, "scripts/inc_Questions.js", (s) => s.replace(/EvalID = [\s\S]*(?=if\(intNumQuestions)/, ""));
    await page.goto(H.fileUrl(dir, "poolframeset.html"));
    await page.locator(".lumMissing").waitFor();

    // Progress from an LMS that does not fit the module is ignored.
    await page.addInitScript(() => {
      window.API = { LMSInitialize: () => "true", LMSFinish: () => "true", LMSCommit: () => "true",
        LMSGetLastError: () => "0", LMSSetValue: () => "true",
        LMSGetValue: (el) => ({ "cmi.suspend_data": "Ea~~~~", "cmi.core.lesson_status": "incomplete" })[el] ?? "" };
    });
    await page.goto(H.fileUrl(H.copyModule("Evaluation"), "poolframeset.html"));
    await qs.first().waitFor();
    assert.equal(await qs.count(), 3);
    assert.equal(await page.locator(".lumQ input:checked").count(), 0);
    assert.deepEqual(errors, []);
    await page.close();
  });

  test("lesson: a missing page file, an activity that does not exist, a term that does not exist", () => H.closing(async (keep) => {
    const dir = H.copyModule("Lesson");
    edit(dir, "page0.html", (s) => s.replaceAll("term0", "term9").replace("showGlossaryPopup('0'", "showGlossaryPopup('9'"));
    edit(dir, "page2.html", (s) => s.replace("writeActivityHTML(2)", "writeActivityHTML(7)"));
    edit(dir, "scripts/inc_QAndA.js", (s) => s + 'arrActObjects[arrActObjects.length] = new objActQuestion(1, "radio");\r\n');
    fs.rmSync(path.join(dir, "page1.html"));
    const server = keep(await H.serve({ "/": dir }));
    const { page, errors } = await H.open(browser, `${server.base}/lessonframeset.html`);
    const frame = page.frameLocator("#lumContent");
    await frame.locator("a[name=term9]").click();
    await frame.getByRole("dialog").waitFor();
    assert.match(await frame.getByRole("dialog").textContent(), /not in the glossary/);
    await page.keyboard.press("Escape");
    await H.next(page, 2);
    await page.locator("#lumNext").click();
    await frame.locator(".lumMissing", { hasText: "Activity 7 is not available." }).waitFor();
    assert.deepEqual(errors, []);
    await page.close();
  }));
});
