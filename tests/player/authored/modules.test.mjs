// The modules a GUI test authored through the program's forms (tests/gui/authored_test.cpp),
// run by a learner: the Lesson, Evaluation and Survey inside an LMS frame whose SCORM 1.2
// run-time is scorm-again, and the module typed full of hostile texts on its own. CTest runs
// this after that GUI test, with LUMORA_AUTHORED_DIR naming the folder it wrote.
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, before, test } from "node:test";
import * as H from "../support/harness.mjs";
import { firstLaunch, inScormLms, interactions as inter, leaveLms } from "../support/lms.mjs";

const authored = process.env.LUMORA_AUTHORED_DIR;
assert.ok(authored, "LUMORA_AUTHORED_DIR names the folder the authoring test wrote");

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

const sco = (page) => page.frameLocator("#sco");
const plain = (html) => html.replace(/<[^>]*>/g, "");

// A copy of one authored module served beside the LMS page, launched for a first attempt; what
// the LMS holds once the learner left it.
async function inLms(name, data, body) {
  const from = path.join(authored, name);
  assert.ok(fs.existsSync(path.join(from, "scripts")), `no authored module in ${from}`);
  return inScormLms(browser, name, "lms.html", async ({ dir, page, go }) => {
    await go(firstLaunch(data));
    await body({ dir, page });
    return leaveLms(page);
  }, from);
}

test("lesson: the term pop-up, the page link, the activity and the picture; completion reaches the LMS", async () => {
  const s = await inLms("Lesson", {}, async ({ page }) => {
    const frame = sco(page);
    const content = frame.frameLocator("#lumContent");
    await H.onPage(frame, 1);
    assert.equal(await frame.locator("#lumTitle").textContent(), "Colour theory");
    assert.deepEqual(await frame.locator("#lumOutline a").allTextContents(), ["Primary colours", "Mixing", "Summary"]);

    // The activity inserted on the first page is the item authored for it.
    const act = content.locator(".lumActivity");
    await act.waitFor();
    assert.match(await act.textContent(), /Which colour is primary\?/);
    await act.getByLabel("Red", { exact: true }).check();
    await act.getByRole("button", { name: "Check answer" }).click();
    await act.locator(".lumFeedback.lumRight").waitFor();
    assert.match(await act.locator(".lumFeedback").textContent(), /Red cannot be mixed/);

    await content.locator("a[name=term2]").click();
    const popup = content.getByRole("dialog");
    await popup.waitFor();
    assert.equal(await popup.locator("h2").textContent(), "Hue");
    assert.match(await popup.textContent(), /The name of a colour/);
    await page.keyboard.press("Escape");
    await popup.waitFor({ state: "detached" });

    await content.locator("a", { hasText: "the summary" }).click();
    await H.onPage(frame, 3);
    assert.equal(await frame.locator('#lumOutline a[aria-current="page"]').textContent(), "Summary");

    await frame.locator("#lumBack").click();
    await H.onPage(frame, 2);
    const picture = content.locator('img[src="media/swatch.png"]');
    await picture.waitFor();
    await H.waitFor(() => picture.evaluate((img) => img.complete && img.naturalWidth === 24));
  });
  assert.equal(s.status, "completed");
});

test("evaluation: three of the five questions asked, the option's feedback shown, the score reaches the LMS", async () => {
  const s = await inLms("Evaluation", { "cmi.student_data.mastery_score": "60" }, async ({ dir, page }) => {
    const frame = sco(page);
    const key = H.answerKey(dir);
    const qs = frame.locator(".lumQ");
    await qs.first().waitFor();
    assert.equal(await qs.count(), 3);
    const asked = new Set();
    for (let i = 0; i < 3; i++) asked.add(await qs.nth(i).locator(".lumQuestion").textContent());
    assert.equal(asked.size, 3);
    for (const q of asked) assert.ok(key.has(q), `not an authored question: ${q}`);

    await H.answer(qs, key, 0);
    const wrong = await H.answer(qs, key, 1, false);
    await H.answer(qs, key, 2);
    await frame.getByRole("button", { name: "Submit" }).click();
    await frame.locator(".lumScore", { hasText: "Your score: 67%" }).waitFor();
    const feedback = wrong.evalDistractors.find((d) => !d.correct).incorrectRationale;
    assert.ok((await qs.nth(1).locator(".lumReview").textContent()).includes(feedback));
  });
  assert.equal(s.last["cmi.core.score.raw"], "67");
  assert.equal(s.status, "passed");
});

test("survey: the three authored questions rated, the ratings reach the LMS", async () => {
  const s = await inLms("Survey", {}, async ({ page }) => {
    const frame = sco(page);
    const qs = frame.locator(".lumQ");
    await qs.first().waitFor();
    assert.deepEqual(await qs.locator(".lumQuestion").allTextContents(),
      ["How clear were the pages?", "How useful was the activity?", "How fair was the evaluation?"]);
    for (const [i, rating] of ["Good", "Excellent", "Poor"].entries()) await qs.nth(i).getByLabel(rating, { exact: true }).check();
    await frame.getByRole("button", { name: "Submit" }).click();
    await frame.locator("#lumResult", { hasText: "Thank you" }).waitFor();
  });
  assert.equal(s.status, "completed");
  assert.deepEqual(inter(s, ".student_response"), ["2", "1", "5"]);
});

test("a lesson typed full of hostile texts still runs and shows them as text", async () => {
  const texts = JSON.parse(fs.readFileSync(path.join(authored, "hostile.json"), "utf8"));
  await H.closing(async (keep) => {
    const server = keep(await H.serve({ "/": H.copyModule("Hostile", path.join(authored, "Hostile")) }));
    const { page, errors } = await H.open(browser);
    keep(page);
    await page.goto(`${server.base}/lessonframeset.html`);
    await H.onPage(page, 1);
    assert.equal(await page.locator("#lumTitle").textContent(), texts.title);
    // The scripts hold texts as string literals with only the quote escaped: a backslash
    // before a letter is the script's escape, so "C:\Lumora" reads "C:Lumora".
    const asScript = (text) => new Function(`return "${text.replaceAll('"', '\\"')}";`)();
    assert.equal(await page.locator("#lumCopyright").textContent(), asScript(texts.copyright));
    assert.equal(await page.locator("#lumOutline a").first().textContent(), texts.pageTitle);
    const content = page.frameLocator("#lumContent");
    assert.ok((await content.locator("body").textContent()).includes(texts.content));
    await content.locator("a[name=term0]").click();
    const popup = content.getByRole("dialog");
    await popup.waitFor();
    assert.equal(await popup.locator("h2").textContent(), texts.term);
    assert.ok((await popup.textContent()).includes(texts.definitionStart));
    assert.ok((await popup.textContent()).length > 100000);
    await page.keyboard.press("Escape");
    // The sample's activity 1, on the second page, is the item typed over.
    await H.next(page, 2);
    const act = content.locator(".lumActivity");
    assert.ok((await act.textContent()).includes(texts.question));
    await act.locator("input").first().check();
    await act.getByRole("button", { name: "Check answer" }).click();
    // A rationale is HTML to the player, as the question is: markup typed there is markup.
    assert.equal(await act.locator(".lumRationale").textContent(), plain(texts.rationale));
    assert.deepEqual(errors, []);
  });
});
