// The three module types inside an LMS frame whose SCORM 1.2 API is scorm-again, one scenario
// per type: what the LMS receives, leaving and resuming, an LMS that refuses to commit, and a
// module saved without SCORM.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import { firstLaunch, inScormLms, interactions as inter, leaveLms, lmsState } from "./support/lms.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

// The longest suspend_data the C++ core computes for each sample template
// (suspendDataWorstCase; tests/unit/storage/suspend_data_test.cpp, SampleTemplates).
const CORE_WORST_CASE = { Lesson: 2, Evaluation: 8, Survey: 5 };

const core = (s, ...fields) => fields.map((f) => s.last[`cmi.core.${f}`]);

// A template in the LMS; leave() takes it out of its frame, its suspend data within what the core
// allows for.
const inLms = (type, body) => inScormLms(browser, type, "lms.html", (run) => {
  const leave = async () => {
    const s = await leaveLms(run.page);
    assert.ok((s.last["cmi.suspend_data"] ?? "").length <= CORE_WORST_CASE[type]);
    return s;
  };
  return body({ ...run, leave });
});

describe("SCORM 1.2", () => {
  test("lesson: bookmark, resume, completion, and commits that fail", () => inLms("Lesson", async ({ go, leave, sco }) => {
    await go(firstLaunch());
    await H.onPage(sco, 1);
    await H.next(sco, 2);
    let s = await leave();
    assert.deepEqual(core(s, "lesson_location", "lesson_status", "exit"), ["1", "incomplete", "suspend"]);

    // Re-entry: back on page 2, and seeing page 3 completes the lesson.
    await go(firstLaunch({ "cmi.core.entry": "resume", "cmi.core.lesson_status": "incomplete",
      "cmi.core.lesson_location": s.last["cmi.core.lesson_location"], "cmi.suspend_data": s.last["cmi.suspend_data"] }));
    await H.onPage(sco, 2);
    await H.next(sco, 3);
    s = await leave();
    assert.equal(s.status, "completed");
    assert.deepEqual(core(s, "lesson_location", "exit"), ["2", ""]);
    assert.equal(s.calls.LMSFinish, 1);

    // A completed lesson visited again is never set back to incomplete.
    await go(firstLaunch({ "cmi.core.lesson_status": "completed", "cmi.core.entry": "" }));
    await H.onPage(sco, 1);
    s = await leave();
    assert.ok(!s.sets.some(([el, v]) => el === "cmi.core.lesson_status" && v !== "completed"));

    // An LMS whose commits fail stops neither the learner nor the progress: every value is
    // handed over again at the end, so what the LMS keeps is current.
    await go(firstLaunch(), "&fail=commit");
    await H.onPage(sco, 1);
    await sco.locator("#lumNext").click();
    await H.next(sco, 3);
    s = await leave();
    assert.ok(s.calls.failedCommit >= 3);
    assert.equal(s.last["cmi.core.lesson_location"], "2");
    assert.equal(s.status, "completed");
  }));

  test("evaluation: answers, resume, score against the mastery score or without one, interactions", () => inLms("Evaluation", async ({ dir, go, leave, sco }) => {
    const key = H.answerKey(dir);
    const mastery = { "cmi.student_data.mastery_score": "80" };
    await go(firstLaunch(mastery));
    const qs = sco.locator(".lumQ");
    await qs.first().waitFor();

    // Answer the first question right and leave; the answer comes back on re-entry.
    const first = await H.answer(qs, key, 0);
    let s = await leave();
    assert.deepEqual(core(s, "lesson_status", "exit", "score.raw"), ["incomplete", "suspend", undefined]);

    await go(firstLaunch({ ...mastery, "cmi.core.entry": "resume", "cmi.core.lesson_status": "incomplete",
      "cmi.suspend_data": s.last["cmi.suspend_data"] }));
    await qs.first().waitFor();
    assert.equal(await qs.first().locator(".lumQuestion").textContent(), first.evalQuestion);
    assert.equal(await qs.first().locator("input:checked").count(), first.evalDistractors.filter((d) => d.correct).length);

    // Submitting with questions open is refused and says which.
    await sco.getByRole("button", { name: "Submit" }).click();
    assert.match(await sco.locator("#lumMsg").textContent(), /Not yet answered: 2, 3\./);
    const wrongItem = await H.answer(qs, key, 1, false);
    await H.answer(qs, key, 2);
    await sco.getByRole("button", { name: "Submit" }).click();
    await sco.locator(".lumScore", { hasText: "Your score: 67%" }).waitFor();
    assert.match(await sco.locator("#lumResult").textContent(), /did not pass.*80%/);
    // The review: the wrongly chosen option's own rationale and the question's rationale.
    const review = await qs.nth(1).locator(".lumReview").textContent();
    assert.match(review, /Incorrect/);
    assert.ok(review.includes(wrongItem.evalDistractors.find((d) => !d.correct).incorrectRationale));
    assert.ok(review.includes(wrongItem.evalRationale));
    assert.ok(await qs.nth(0).locator("input").first().isDisabled());

    s = await leave();
    assert.deepEqual(core(s, "score.raw", "score.min", "score.max", "exit"), ["67", "0", "100", ""]);
    assert.equal(s.status, "failed");
    assert.deepEqual(inter(s, ".type"), ["choice", "choice", "choice"]);
    assert.deepEqual(inter(s, ".result"), ["correct", "wrong", "correct"]);
    const firstPattern = first.evalDistractors.map((d, i) => (d.correct ? String(i) : "")).filter(Boolean).join(",");
    assert.equal(s.last["cmi.interactions.0.correct_responses.0.pattern"], firstPattern);
    assert.equal(s.last["cmi.interactions.0.student_response"], firstPattern);

    // All right: passed against a mastery score, completed without one.
    for (const [score, status] of [["80", "passed"], ["", "completed"]]) {
      await go(firstLaunch(score ? { "cmi.student_data.mastery_score": score } : {}));
      await qs.first().waitFor();
      for (let i = 0; i < 3; i++) await H.answer(qs, key, i);
      await sco.getByRole("button", { name: "Submit" }).click();
      await sco.locator(".lumScore", { hasText: "Your score: 100%" }).waitFor();
      s = await leave();
      assert.deepEqual([s.status, s.last["cmi.core.score.raw"]], [status, "100"], score);
    }
  }));

  test("survey: one likert interaction per question, completed, thanks; useSCORM false stays silent", () => inLms("Survey", async ({ dir, page, go, leave, sco }) => {
    await go(firstLaunch());
    const qs = sco.locator(".lumQ");
    await qs.first().waitFor();
    for (const [i, rating] of ["Excellent", "Below Average", "Poor"].entries()) await qs.nth(i).getByLabel(rating, { exact: true }).check();
    await sco.getByRole("button", { name: "Submit" }).click();
    await sco.locator("#lumResult", { hasText: "Thank you" }).waitFor();
    let s = await leave();
    assert.equal(s.status, "completed");
    assert.deepEqual(inter(s, ".type"), ["likert", "likert", "likert"]);
    assert.deepEqual(inter(s, ".student_response"), ["1", "4", "5"]);
    assert.deepEqual(inter(s, ".result"), ["neutral", "neutral", "neutral"]);

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
