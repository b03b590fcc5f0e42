// The three module types inside an LMS whose SCORM 2004 API is scorm-again's Scorm2004API, with
// every call checked against the data model's strict limits: completion and success apart, the
// scaled passing score, resuming, browse mode, an LMS that says "false", and a pop-up window.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import { firstLaunch2004, inScormLms, strict2004Violations } from "./support/lms.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

// What the LMS saw: every call, the last value set of each element, and the run-time's own view.
const lmsState = (page) => page.evaluate(() => {
  const last = {};
  for (const [name, el, v] of window.lmsLog) if (name === "SetValue") last[el] = v;
  return { log: window.lmsLog, last, cmi: JSON.parse(JSON.stringify(API_1484_11.cmi)) };
});
const sets = (s, re) => s.log.filter(([name, el]) => name === "SetValue" && re.test(el)).map(([, el, v]) => [el, v]);
// The values set for one field of every interaction, in order.
const field = (s, f) => sets(s, new RegExp(`^cmi\\.interactions\\.\\d+\\.${f}$`)).map(([, v]) => v);

// Takes the module out of its frame and returns what the LMS saw, every call within the strict
// limits unless the LMS was told to refuse them.
async function leave(page, strict = true) {
  await page.evaluate(() => (document.getElementById("sco").src = "about:blank"));
  await H.waitFor(() => page.evaluate(() => window.lmsLog.some(([name]) => name === "Terminate")));
  const s = await lmsState(page);
  if (strict) assert.deepEqual(strict2004Violations(s.log), []);
  return s;
}

const inLms = (type, body) => inScormLms(browser, type, "lms2004.html", body);

describe("SCORM 2004", () => {
  test("lesson: left and resumed, completed, browsed without a status, and refused", () => inLms("Lesson", async ({ page, go, sco }) => {
    await go(firstLaunch2004());
    await H.onPage(sco, 1);
    await H.next(sco, 2);
    let s = await leave(page);
    assert.deepEqual(["cmi.location", "cmi.completion_status", "cmi.exit"].map((el) => s.last[el]), ["1", "incomplete", "suspend"]);
    assert.equal(sets(s, /success_status|score/).length, 0);

    await go(firstLaunch2004({ "cmi.entry": "resume", "cmi.completion_status": "incomplete",
      "cmi.location": s.last["cmi.location"], "cmi.suspend_data": s.last["cmi.suspend_data"] }));
    await H.onPage(sco, 2);
    await H.next(sco, 3);
    s = await leave(page);
    assert.equal(s.cmi.completion_status, "completed");
    assert.equal(s.last["cmi.exit"], "normal");
    assert.equal(sets(s, /success_status/).length, 0);

    // Browse mode: every page seen, nothing that counts recorded.
    await go(firstLaunch2004({ "cmi.mode": "browse" }));
    await H.next(sco, 2);
    await H.next(sco, 3);
    s = await leave(page);
    assert.deepEqual(sets(s, /./), []);

    // An LMS that answers false to every value: still one session, ended once, the values
    // offered again at its end.
    await go(firstLaunch2004(), "&fail=all");
    await H.onPage(sco, 1);
    await H.next(sco, 2);
    await H.next(sco, 3);
    s = await leave(page, false);
    assert.equal(s.log.filter(([name]) => name === "Terminate").length, 1);
    assert.equal(s.log.at(-1)[0], "Terminate");
    assert.equal(s.last["cmi.completion_status"], "completed");
  }));

  test("evaluation: passed or failed against the scaled passing score, unknown without one", () => inLms("Evaluation", async ({ dir, page, go, sco }) => {
    const key = H.answerKey(dir);
    const runs = [
      { pass: "0.8", wrong: 1, shown: "Your score: 67%", success: "failed", scaled: "0.67" },
      { pass: "0.8", wrong: -1, shown: "Your score: 100%", success: "passed", scaled: "1" },
      { pass: "", wrong: 1, shown: "Your score: 67%", success: "unknown", scaled: "0.67" },
    ];
    for (const run of runs) {
      await go(firstLaunch2004(run.pass ? { "cmi.scaled_passing_score": run.pass } : {}));
      const qs = sco.locator(".lumQ");
      await qs.first().waitFor();
      const first = await H.answer(qs, key, 0); // the first question is answered right
      for (let i = 1; i < 3; i++) await H.answer(qs, key, i, i !== run.wrong);
      await sco.getByRole("button", { name: "Submit" }).click();
      await sco.locator(".lumScore", { hasText: run.shown }).waitFor();
      const s = await leave(page);
      assert.equal(s.cmi.completion_status, "completed");
      assert.equal(s.last["cmi.success_status"], run.success);
      assert.deepEqual(["scaled", "raw", "min", "max"].map((f) => s.last[`cmi.score.${f}`]),
        [run.scaled, String(Math.round(+run.scaled * 100)), "0", "100"]);
      assert.equal(s.last["cmi.exit"], "normal");
      assert.deepEqual(field(s, "type"), ["choice", "choice", "choice"]);
      assert.deepEqual(field(s, "result"), [0, 1, 2].map((i) => (i === run.wrong ? "incorrect" : "correct")));
      const correct = first.evalDistractors.map((d, i) => (d.correct ? String(i) : "")).filter(Boolean).join("[,]");
      assert.equal(field(s, "correct_responses\\.0\\.pattern")[0], correct);
      assert.equal(field(s, "learner_response")[0], correct);
    }
  }));

  test("survey: launched in a pop-up, one likert interaction per rating", () => inLms("Survey", async ({ page, go }) => {
    const popup = page.waitForEvent("popup");
    await go(firstLaunch2004(), "&popup=1");
    const sco = await popup;
    const errors = [];
    sco.on("pageerror", (e) => errors.push(String(e)));
    const qs = sco.locator(".lumQ");
    await qs.first().waitFor();
    for (const [i, rating] of ["Excellent", "Below Average", "Poor"].entries()) await qs.nth(i).getByLabel(rating, { exact: true }).check();
    await sco.getByRole("button", { name: "Submit" }).click();
    await sco.locator("#lumResult", { hasText: "Thank you" }).waitFor();
    await sco.close();
    await H.waitFor(() => page.evaluate(() => window.lmsLog.some(([name]) => name === "Terminate")));
    const s = await lmsState(page);
    assert.deepEqual(strict2004Violations(s.log), []);
    assert.equal(s.cmi.completion_status, "completed");
    assert.equal(sets(s, /success_status|score/).length, 0);
    assert.deepEqual(field(s, "type"), ["likert", "likert", "likert"]);
    assert.deepEqual(field(s, "learner_response"), ["1", "4", "5"]);
    assert.deepEqual(field(s, "result"), ["neutral", "neutral", "neutral"]);
    assert.deepEqual(errors, []);
  }));
});
