// AICC HACP: GetParam at start, PutParam with progress, ExitAU at the end, against an endpoint
// on loopback; and an LMS that answers errors or nothing at all.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";
import { getParamData, hacpHandler } from "./support/lms.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

// Runs `body` over a fresh copy of `type` served beside an HACP endpoint answering from `state`;
// open(query) opens the module's frameset with the query made from the endpoint's address.
const withAicc = (type, state, body) => H.closing(async (keep) => {
  const dir = H.copyModule(type);
  const server = keep(await H.serve({ "/m/": dir }, hacpHandler(state)));
  // open(query, page): on a page of the test's own (with its routes set) when given one.
  const open = async (query, page) => {
    const url = `${server.base}/m/${H.FRAMESET[type]}?${query(`${server.base}/hacp`)}`;
    const opened = page ? (await page.goto(url), { page }) : await H.open(browser, url);
    keep(opened.page);
    return opened;
  };
  await body({ dir, open });
});
const commands = (state) => state.requests.map((r) => r.fields.command);
const putParams = (state) => state.requests.filter((r) => r.fields.command === "PutParam").map((r) => r.fields.aicc_data);

describe("AICC HACP", () => {
  test("lesson: resumes at the LMS's location and reports progress", () => {
    const state = { requests: [], getParam: getParamData({ location: "2", status: "incomplete, resume", coreLesson: "LD" }) };
    return withAicc("Lesson", state, async ({ open }) => {
      // Parameter names in any case; the URL unencoded, as some LMSs send it.
      const { page } = await open((hacp) => `AICC_SID=abc%201&AICC_URL=${hacp}`);
      await H.onPage(page, 3);
      await H.waitFor(() => putParams(state).some((d) => /Lesson_Status=completed/.test(d)));
      await page.goto("about:blank");
      await H.waitFor(() => commands(state).includes("ExitAU"));
      const first = state.requests[0];
      assert.equal(first.fields.command, "GetParam");
      assert.equal(first.fields.session_id, "abc 1");
      assert.equal(first.fields.version, "4.0");
      assert.match(first.type, /application\/x-www-form-urlencoded/);
      assert.ok(!first.body.startsWith("aicc_data") && !/&command=[^&]*$/.test(first.body), "command is not last");
      const last = putParams(state).at(-1);
      assert.match(last, /^\[Core\]\r\nLesson_Location=2\r\nLesson_Status=completed\r\nScore=\r\nTime=\d{2}:\d{2}:\d{2}\r\n\[Core_Lesson\]\r\nL[A-Za-z0-9_-]\r\n$/);
      assert.ok(!/[^\r]\n/.test(last), "lines end in CR LF");
    });
  });

  // The first page starts loading before the player, which comes at the latest half a second
  // later. When the first page is still loading then (its scripts slow) and the LMS resumes on
  // another page (slower still), the first page is not taken for seen: page 2 alone unseen, the
  // lesson stays incomplete at the resumed location.
  test("lesson: a resume is not undone by the first page reporting late", () => {
    const state = { requests: [], getParam: getParamData({ location: "2", status: "incomplete, resume", coreLesson: "LC" }) };
    return withAicc("Lesson", state, async ({ open }) => {
      const { page } = await H.open(browser);
      const late = (ms) => async (route) => (await new Promise((done) => setTimeout(done, ms)), route.continue());
      await page.route("**/player-page.js", late(1200));
      await page.route("**/page2.html", late(2500));
      await open((hacp) => `aicc_sid=S2&aicc_url=${hacp}`, page);
      await H.waitFor(() => page.frameLocator("#lumContent").locator("body").evaluate(() => /page2/.test(location.href)));
      await new Promise((done) => setTimeout(done, 1400)); // page 3's own report, its script late too
      await page.goto("about:blank");
      await H.waitFor(() => commands(state).includes("ExitAU"));
      assert.ok(putParams(state).every((d) => /Lesson_Location=2\r\nLesson_Status=incomplete\r\n/.test(d)), putParams(state).join("|"));
    });
  });

  test("evaluation: mastery score from [Student_Data], score in PutParam", () => {
    const state = { requests: [], getParam: getParamData({ mastery: "50" }) };
    return withAicc("Evaluation", state, async ({ dir, open }) => {
      const { page } = await open((hacp) => `aicc_sid=S9&aicc_url=${encodeURIComponent(hacp)}`);
      const qs = page.locator(".lumQ");
      await qs.first().waitFor();
      const key = H.answerKey(dir);
      for (let i = 0; i < 3; i++) await H.answer(qs, key, i);
      await page.getByRole("button", { name: "Submit" }).click();
      await page.locator(".lumScore", { hasText: "100%" }).waitFor();
      assert.match(await page.locator("#lumResult").textContent(), /You passed/);
      await H.waitFor(() => putParams(state).some((d) => /Lesson_Status=passed\r\nScore=100\r\n/.test(d)));
      await page.close();
      await H.waitFor(() => commands(state).includes("ExitAU"));
    });
  });

  // A slow LMS answers each request 300 ms late. Every request of the session waits for the
  // answer to the one before; ExitAU is the last, also when the page goes mid-session with
  // progress still unsent, and the last PutParam before it holds the learner's latest state.
  const exitCases = [
    { what: "a survey submitted, then the window closed at once", type: "Survey", walk: async (page) => {
      const qs = page.locator(".lumQ");
      for (const [i, rating] of ["Excellent", "Good", "Poor"].entries()) await qs.nth(i).getByLabel(rating, { exact: true }).check();
      await page.getByRole("button", { name: "Submit" }).click();
      await page.locator("#lumResult", { hasText: "Thank you" }).waitFor();
    }, last: /Lesson_Status=completed\r\n[\s\S]*\[Core_Lesson\]\r\nSsBCF\r\n$/ },
    { what: "a lesson left mid-session, two pages on", type: "Lesson", walk: async (page) => {
      for (const n of [2, 3]) {
        await page.locator("#lumNext").click();
        await page.locator("#lumPageNum", { hasText: `Page ${n} of 3` }).waitFor();
      }
    }, last: /^\[Core\]\r\nLesson_Location=2\r\nLesson_Status=completed\r\n/ },
  ];
  for (const c of exitCases) {
    test(`ExitAU is the last request under a slow LMS: ${c.what}`, () => {
      const state = { requests: [], delay: 300, getParam: getParamData() };
      return withAicc(c.type, state, async ({ open }) => {
        const { page, errors } = await open((hacp) => `aicc_sid=S1&aicc_url=${hacp}`);
        await page.locator(c.type === "Lesson" ? "#lumPageNum" : ".lumQ").first().waitFor();
        await c.walk(page);
        await page.close(); // the window goes, whatever is still on its way
        await H.waitFor(() => commands(state).includes("ExitAU"));
        await new Promise((done) => setTimeout(done, 1000)); // anything late would arrive by now
        const sent = commands(state);
        assert.equal(sent[0], "GetParam");
        assert.equal(sent.at(-1), "ExitAU", sent.join(" "));
        assert.equal(sent.filter((x) => x === "ExitAU").length, 1);
        assert.match(putParams(state).at(-1), c.last);
        // While the page lived, no request went before the one ahead of it was answered.
        const live = state.requests.slice(0, -2);
        for (let i = 1; i < live.length; i++) assert.ok(live[i].arrived >= live[i - 1].answered, `${sent[i]} overtook ${sent[i - 1]}`);
        assert.deepEqual(errors, []);
      });
    });
  }

  for (const mode of ["error", "silent"]) {
    test(`an LMS that answers ${mode === "error" ? "errors" : "nothing"} does not stop the learner`, () => withAicc("Survey", { requests: [], mode, getParam: "" }, async ({ open }) => {
      const { page, errors } = await open((hacp) => `aicc_sid=S1&aicc_url=${hacp}`);
      const qs = page.locator(".lumQ");
      await qs.first().waitFor({ timeout: 8000 });
      for (let i = 0; i < 3; i++) await qs.nth(i).getByLabel("Good", { exact: true }).check();
      await page.getByRole("button", { name: "Submit" }).click();
      await page.locator("#lumResult", { hasText: "Thank you" }).waitFor();
      assert.deepEqual(errors, []);
    }));
  }
});
