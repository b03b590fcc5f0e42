// The three module types inside an LMS frame whose SCORM 1.2 API is scorm-again, one scenario
// per type: what the LMS receives, leaving and resuming, an LMS that refuses to commit, and a
// module saved without SCORM.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import { firstLaunch, lmsState, lmsUrl, scormServer, strictViolations } from "./support/lms.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

// The longest suspend_data the C++ core computes for each sample template
// (suspendDataWorstCase; tests/unit/storage/suspend_data_test.cpp, SampleTemplates).
const CORE_WORST_CASE = { Lesson: 2, Evaluation: 8, Survey: 5 };

// Leaves the module (its frame navigates away) so it commits and finishes.
async function leave(page) {
  await page.evaluate(() => (document.getElementById("sco").src = "about:blank"));
  await H.waitFor(() => page.evaluate(() => (window.lmsCalls.LMSFinish || 0) > 0));
  return lmsState(page);
}

const sco = (page) => page.frameLocator("#sco");
// The values set for every interaction's field ending in `end`, in order.
const inter = (s, end) => s.sets.filter(([el]) => el.startsWith("cmi.interactions.") && el.endsWith(end)).map(([, v]) => v);

// Runs `body` over a fresh copy of `type` served beside the LMS page; go(data) (re)launches it.
const inLms = (type, body) => H.closing(async (keep) => {
  const dir = H.copyModule(type);
  const server = keep(await scormServer(dir));
  const { page, errors } = await H.open(browser);
  keep(page);
  const go = (data, extra) => page.goto(lmsUrl(server.base, H.FRAMESET[type], data, extra));
  await body({ dir, page, errors, go });
});

describe("SCORM 1.2", () => {
  test("lesson: bookmark, resume, completion, and commits that fail", () => inLms("Lesson", async ({ page, errors, go }) => {
    await go(firstLaunch());
    await sco(page).locator("#lumPageNum", { hasText: "Page 1 of 3" }).waitFor();
    await sco(page).locator("#lumNext").click();
    await sco(page).locator("#lumPageNum", { hasText: "Page 2 of 3" }).waitFor();
    let s = await leave(page);
    assert.equal(s.last["cmi.core.lesson_location"], "1");
    assert.equal(s.last["cmi.core.lesson_status"], "incomplete");
    assert.equal(s.last["cmi.core.exit"], "suspend");
    assert.match(s.last["cmi.core.session_time"], /^\d{2}:\d{2}:\d{2}$/);
    assert.ok(!s.sets.some(([el, v]) => el === "cmi.core.lesson_status" && v === "not attempted"));
    assert.ok(s.last["cmi.suspend_data"].length <= CORE_WORST_CASE.Lesson);
    assert.deepEqual(strictViolations(s.sets), []);

    // Re-entry: back on page 2, and seeing page 3 completes the lesson.
    await go(firstLaunch({ "cmi.core.entry": "resume", "cmi.core.lesson_status": "incomplete",
      "cmi.core.lesson_location": s.last["cmi.core.lesson_location"], "cmi.suspend_data": s.last["cmi.suspend_data"] }));
    await sco(page).locator("#lumPageNum", { hasText: "Page 2 of 3" }).waitFor();
    await sco(page).locator("#lumNext").click();
    await sco(page).locator("#lumPageNum", { hasText: "Page 3 of 3" }).waitFor();
    s = await leave(page);
    assert.equal(s.status, "completed");
    assert.equal(s.last["cmi.core.exit"], "");
    assert.equal(s.last["cmi.core.lesson_location"], "2");
    assert.equal(s.calls.LMSFinish, 1);
    assert.deepEqual(strictViolations(s.sets), []);

    // A completed lesson visited again is never set back to incomplete.
    await go(firstLaunch({ "cmi.core.lesson_status": "completed", "cmi.core.entry": "" }));
    await sco(page).locator("#lumPageNum", { hasText: "Page 1 of 3" }).waitFor();
    s = await leave(page);
    assert.ok(!s.sets.some(([el, v]) => el === "cmi.core.lesson_status" && v !== "completed"));

    // An LMS whose commits fail stops neither the learner nor the progress: every value is
    // handed over again at the end, so what the LMS keeps is current.
    await go(firstLaunch(), "&fail=commit");
    await sco(page).locator("#lumPageNum", { hasText: "Page 1 of 3" }).waitFor();
    await sco(page).locator("#lumNext").click();
    await sco(page).locator("#lumNext").click();
    await sco(page).locator("#lumPageNum", { hasText: "Page 3 of 3" }).waitFor();
    s = await leave(page);
    assert.ok(s.calls.failedCommit >= 3);
    assert.equal(s.last["cmi.core.lesson_location"], "2");
    assert.equal(s.status, "completed");
    assert.deepEqual(errors, []);
  }));

  test("evaluation: answers, resume, score against the mastery score or without one, interactions", () => inLms("Evaluation", async ({ dir, page, errors, go }) => {
    const key = H.answerKey(dir);
    const mastery = { "cmi.student_data.mastery_score": "80" };
    await go(firstLaunch(mastery));
    const qs = sco(page).locator(".lumQ");
    await qs.first().waitFor();
    assert.equal(await qs.count(), 3);

    // Answer the first question right and leave; the answer comes back on re-entry.
    const first = await H.answer(qs, key, 0);
    let s = await leave(page);
    assert.equal(s.last["cmi.core.lesson_status"], "incomplete");
    assert.equal(s.last["cmi.core.exit"], "suspend");
    assert.ok(!("cmi.core.score.raw" in s.last));

    await go(firstLaunch({ ...mastery, "cmi.core.entry": "resume", "cmi.core.lesson_status": "incomplete",
      "cmi.suspend_data": s.last["cmi.suspend_data"] }));
    await qs.first().waitFor();
    assert.equal(await qs.first().locator(".lumQuestion").innerHTML(), first.evalQuestion);
    assert.equal(await qs.first().locator("input:checked").count(), first.evalDistractors.filter((d) => d.correct).length);

    // Submitting with questions open is refused and says which.
    await sco(page).getByRole("button", { name: "Submit" }).click();
    assert.match(await sco(page).locator("#lumMsg").textContent(), /Not yet answered: 2, 3\./);
    const wrongItem = await H.answer(qs, key, 1, false);
    await H.answer(qs, key, 2);
    await sco(page).getByRole("button", { name: "Submit" }).click();
    await sco(page).locator(".lumScore", { hasText: "Your score: 67%" }).waitFor();
    assert.match(await sco(page).locator("#lumResult").textContent(), /did not pass.*80%/);
    // The review: the wrongly chosen option's own rationale and the question's rationale.
    const review = await qs.nth(1).locator(".lumReview").textContent();
    assert.match(review, /Incorrect/);
    assert.ok(review.includes(wrongItem.evalDistractors.find((d) => !d.correct).incorrectRationale));
    assert.ok(review.includes(wrongItem.evalRationale));
    assert.ok(await qs.nth(0).locator("input").first().isDisabled());

    s = await leave(page);
    assert.deepEqual(["raw", "min", "max"].map((f) => s.last[`cmi.core.score.${f}`]), ["67", "0", "100"]);
    assert.equal(s.status, "failed");
    assert.equal(s.last["cmi.core.exit"], "");
    assert.equal(inter(s, ".id").length, 3);
    assert.deepEqual(inter(s, ".type"), ["choice", "choice", "choice"]);
    assert.deepEqual(inter(s, ".result"), ["correct", "wrong", "correct"]);
    const firstPattern = first.evalDistractors.map((d, i) => (d.correct ? String(i) : "")).filter(Boolean).join(",");
    assert.equal(s.last["cmi.interactions.0.correct_responses.0.pattern"], firstPattern);
    assert.equal(s.last["cmi.interactions.0.student_response"], firstPattern);
    assert.ok(s.last["cmi.suspend_data"].length <= CORE_WORST_CASE.Evaluation);
    assert.deepEqual(strictViolations(s.sets), []);

    // All right: passed against a mastery score, completed without one.
    for (const [score, status] of [["80", "passed"], ["", "completed"]]) {
      await go(firstLaunch(score ? { "cmi.student_data.mastery_score": score } : {}));
      await qs.first().waitFor();
      for (let i = 0; i < 3; i++) await H.answer(qs, key, i);
      await sco(page).getByRole("button", { name: "Submit" }).click();
      await sco(page).locator(".lumScore", { hasText: "Your score: 100%" }).waitFor();
      s = await leave(page);
      assert.equal(s.status, status, score);
      assert.equal(s.last["cmi.core.score.raw"], "100");
      assert.ok(s.last["cmi.suspend_data"].length <= CORE_WORST_CASE.Evaluation);
      assert.deepEqual(strictViolations(s.sets), []);
    }
    assert.deepEqual(errors, []);
  }));

  test("survey: one likert interaction per question, completed, thanks; useSCORM false stays silent", () => inLms("Survey", async ({ dir, page, go }) => {
    await go(firstLaunch());
    const qs = sco(page).locator(".lumQ");
    await qs.first().waitFor();
    const ratings = ["Excellent", "Below Average", "Poor"];
    for (let i = 0; i < 3; i++) await qs.nth(i).getByLabel(ratings[i], { exact: true }).check();
    await sco(page).getByRole("button", { name: "Submit" }).click();
    await sco(page).locator("#lumResult", { hasText: "Thank you" }).waitFor();
    let s = await leave(page);
    assert.equal(s.status, "completed");
    assert.deepEqual(inter(s, ".type"), ["likert", "likert", "likert"]);
    assert.deepEqual(inter(s, ".student_response"), ["1", "4", "5"]);
    assert.deepEqual(inter(s, ".result"), ["neutral", "neutral", "neutral"]);
    assert.ok(s.last["cmi.suspend_data"].length <= CORE_WORST_CASE.Survey);
    assert.deepEqual(strictViolations(s.sets), []);

    // Saved without SCORM, the module never talks to the LMS.
    const file = path.join(dir, "scripts", "inc_Objectives.js");
    fs.writeFileSync(file, fs.readFileSync(file, "utf8").replace("var useSCORM = true;", "var useSCORM = false;"));
    await go(firstLaunch());
    await qs.first().waitFor();
    await page.evaluate(() => (document.getElementById("sco").src = "about:blank"));
    await page.waitForTimeout(200);
    s = await lmsState(page);
    assert.equal(s.calls.LMSInitialize, undefined);
    assert.deepEqual(s.sets, []);
  }));
});
