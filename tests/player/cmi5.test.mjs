// The three module types as cmi5 AUs, launched by a test LMS whose LRS keeps every statement:
// each session's statements valid xAPI and within cmi5's rules; resuming in a later session of
// the same registration; judged against the mastery score or not; Browse mode; the return
// address; and an LRS that refuses or falls silent.
import assert from "node:assert/strict";
import { randomUUID } from "node:crypto";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import { cmi5Lms, cmi5Violations } from "./support/cmi5.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

// A module served on one origin, the LMS on another; every statement the LMS got keeps the rules.
const withLms = (type, body) => H.closing(async (keep) => {
  const dir = H.copyModule(type);
  const server = keep(await H.serve({ "/m/": dir }));
  const lms = keep(await cmi5Lms());
  const { page, errors } = await H.open(browser);
  keep(page);
  const launch = (options) => page.goto(lms.launchUrl(`${server.base}/m/${H.FRAMESET[type]}`, options));
  await body({ dir, lms, page, launch, keep });
  assert.deepEqual(cmi5Violations(lms), []);
  assert.deepEqual(errors, []);
});

// Leaves the module and waits for its last statement.
async function leave(page, lms) {
  const launch = lms.launches.at(-1);
  await page.goto("about:blank");
  await H.waitFor(() => lms.verbs(launch).includes("terminated"));
  return lms.verbs(launch);
}

const answered = (n) => Array(n).fill("answered");

describe("cmi5", () => {
  test("lesson: bookmark kept for a later session of the same registration, completed once", () => withLms("Lesson", async ({ lms, page, launch }) => {
    const registration = randomUUID();
    await launch({ registration });
    await H.onPage(page, 1);
    await H.next(page, 2);
    assert.deepEqual(await leave(page, lms), ["initialized", "terminated"]);

    await launch({ registration });
    await H.onPage(page, 2);
    await H.next(page, 3);
    await page.locator("#lumOutline a").first().click(); // back to page 1: nothing is undone
    await H.onPage(page, 1);
    assert.deepEqual(await leave(page, lms), ["initialized", "completed", "terminated"]);

    // And once more: completed was said for this registration and is not said again.
    await launch({ registration });
    await H.onPage(page, 1);
    assert.deepEqual(await leave(page, lms), ["initialized", "terminated"]);
    assert.deepEqual(Object.values(lms.fetches), [1, 1, 1]); // each launch's token fetched once
    assert.equal(lms.preferencesRead, 3);
  }));

  test("evaluation: failed and passed against the mastery score, completed only without one", () => withLms("Evaluation", async ({ dir, lms, page, launch }) => {
    const key = H.answerKey(dir);
    const runs = [
      { masteryScore: 0.8, moveOn: "Passed", wrong: 1, verdict: "failed", scaled: 0.67 },
      { masteryScore: 0.8, moveOn: "Passed", wrong: -1, verdict: "passed", scaled: 1 },
      { moveOn: "CompletedOrPassed", wrong: 1 },
    ];
    for (const run of runs) {
      await launch(run);
      const qs = page.locator(".lumQ");
      await qs.first().waitFor();
      for (let i = 0; i < 3; i++) await H.answer(qs, key, i, i !== run.wrong);
      await page.getByRole("button", { name: "Submit" }).click();
      await page.locator(".lumScore").waitFor();
      const verbs = await leave(page, lms);
      assert.deepEqual(verbs, ["initialized", ...answered(3), "completed", ...(run.verdict ? [run.verdict] : []), "terminated"]);
      const list = lms.session(lms.launches.at(-1));
      const answers = list.filter((s) => s.verb.id.endsWith("/answered"));
      assert.deepEqual(answers.map((s) => s.result.success), [0, 1, 2].map((i) => i !== run.wrong));
      assert.ok(answers.every((s) => s.object.definition.interactionType === "choice" && s.object.definition.correctResponsesPattern.length === 1));
      if (run.verdict) assert.equal(list.find((s) => s.verb.id.endsWith(run.verdict)).result.score.scaled, run.scaled);
    }
  }));

  test("survey: one likert answer per rating, completed; Exit; a fetch URL without a token", () => withLms("Survey", async ({ lms, page, launch, keep }) => {
    await launch();
    const qs = page.locator(".lumQ");
    await qs.first().waitFor();
    for (const [i, rating] of ["Excellent", "Below Average", "Poor"].entries()) await qs.nth(i).getByLabel(rating, { exact: true }).check();
    await page.getByRole("button", { name: "Submit" }).click();
    await page.locator("#lumResult", { hasText: "Thank you" }).waitFor();
    assert.deepEqual(await leave(page, lms), ["initialized", ...answered(3), "completed", "terminated"]);
    const answers = lms.session(lms.launches[0]).filter((s) => s.verb.id.endsWith("/answered"));
    assert.deepEqual(answers.map((s) => s.result.response), ["1", "4", "5"]);
    assert.ok(answers.every((s) => s.object.definition.interactionType === "likert" && !("success" in s.result)));

    // Exit ends the session and goes to the LMS's return address.
    await launch({ returnURL: "/return" });
    await page.locator(".lumQ").first().waitFor();
    await page.getByRole("button", { name: "Exit" }).click();
    await page.getByRole("heading", { name: "Back in the LMS" }).waitFor();
    assert.deepEqual(lms.verbs(lms.launches[1]), ["initialized", "terminated"]);

    // A fetch URL that gives no token leaves the module running on its own, sending nothing.
    const url = new URL(lms.launchUrl(`${lms.base}/nowhere`));
    url.searchParams.set("fetch", `${lms.base}/garbage`);
    const server = keep(await H.serve({ "/m/": H.copyModule("Survey") }));
    const sent = lms.statements.length;
    await page.goto(`${server.base}/m/surveyframeset.html${url.search}`);
    await page.locator(".lumQ").first().waitFor();
    await page.getByRole("button", { name: "Submit" }).click();
    await page.locator("#lumMsg", { hasText: "Please answer every question" }).waitFor();
    assert.equal(lms.statements.length, sent);
  }));

  test("Browse mode: initialized and terminated only, nothing kept", () => withLms("Lesson", async ({ lms, page, launch }) => {
    await launch({ launchMode: "Browse" });
    await H.next(page, 2);
    await H.next(page, 3);
    assert.deepEqual(await leave(page, lms), ["initialized", "terminated"]);
    assert.equal(lms.states.size, 1); // LMS.LaunchData alone
  }));

  test("an LRS that refuses once gets the statements again; refusing all or falling silent does not stop the learner", () => withLms("Evaluation", async ({ dir, lms, page, launch }) => {
    const key = H.answerKey(dir);
    // Refusing once starts after initialized was taken; the broken LRSs are broken from the start.
    const runs = [
      { what: "refuses once", after: () => (lms.refuse = 1) },
      { what: "refuses every statement", before: () => (lms.refuse = Infinity) },
      { what: "never answers a statement", before: () => (lms.silent = true) },
    ];
    for (const run of runs) {
      run.before?.();
      await launch({ masteryScore: 0.5, moveOn: "Passed" });
      const qs = page.locator(".lumQ");
      await qs.first().waitFor();
      if (run.after) {
        await H.waitFor(() => lms.verbs(lms.launches.at(-1)).includes("initialized"));
        run.after();
      }
      for (let i = 0; i < 3; i++) await H.answer(qs, key, i);
      await page.getByRole("button", { name: "Submit" }).click();
      await page.locator("#lumResult", { hasText: "You passed." }).waitFor();
      if (!run.after) continue;
      await H.waitFor(() => lms.refuse === 0);
      assert.deepEqual(await leave(page, lms), ["initialized", ...answered(3), "completed", "passed", "terminated"]);
    }
  }));
});
