// The Lesson as a learner meets it standalone: opened from disk, where each page runs the player
// of its own, and over loopback HTTP, where the pages use the frameset's.
import assert from "node:assert/strict";
import { after, before, describe, test } from "node:test";
import * as H from "./support/harness.mjs";

let browser;
before(async () => (browser = await H.launch()));
after(async () => browser?.close());

describe("lesson standalone", () => {
  test("opened from disk: pages render their own activities and pop-ups; keyboard alone works it", async () => {
    const dir = H.copyModule("Lesson");
    const { page, errors } = await H.open(browser, H.fileUrl(dir, "lessonframeset.html"));
    const content = page.frameLocator("#lumContent");
    await H.onPage(page, 1);
    await content.locator("h2", { hasText: "Welcome" }).waitFor();
    assert.ok(await page.locator("#lumBack").isDisabled());
    // file:// keeps the frames apart, so the page uses its own player.
    assert.equal(await page.frames()[1].evaluate(() => parentRef === window.lumoraPlayer), true);

    // A page link inside the content moves within the lesson and the frameset follows.
    await content.locator('a[href="page1.html"]').click();
    await H.onPage(page, 2);
    assert.equal(await page.locator('#lumOutline a[aria-current="page"]').textContent(), "Key ideas");

    // Activity 1 (single choice): wrong, then right, with the rationale.
    const act = content.locator(".lumActivity");
    await act.getByLabel("When the first page has been opened").check();
    await act.getByRole("button", { name: "Check answer" }).click();
    await act.locator(".lumFeedback.lumWrong").waitFor();
    assert.match(await act.locator(".lumFeedback").textContent(), /Not quite\..*seen every page/);
    await act.getByLabel("When every page has been seen").check();
    await act.getByRole("button", { name: "Check answer" }).click();
    await act.locator(".lumFeedback.lumRight").waitFor();
    assert.equal(await act.locator(".lumFeedback").getAttribute("aria-live"), "polite");

    // The glossary pop-up: sized as asked, names the term, closes with Escape, focus returns.
    const link = content.locator("a[name=term1]");
    await link.focus();
    await page.keyboard.press("Enter");
    const dialog = content.getByRole("dialog");
    await dialog.waitFor();
    assert.equal(await dialog.locator("h2").textContent(), "Activity");
    assert.match(await dialog.textContent(), /immediate feedback/);
    assert.equal(await dialog.evaluate((d) => d.style.width), "240px");
    await page.keyboard.press("Escape");
    await dialog.waitFor({ state: "detached" });
    assert.equal(await link.evaluate((a) => a === document.activeElement), true);

    await H.next(page, 3);
    assert.ok(await page.locator("#lumNext").isDisabled());
    // Activity 2 (several answers, shuffled): only the full correct set counts.
    const act2 = content.locator(".lumActivity");
    await act2.getByLabel("Text and pictures").check();
    await act2.getByRole("button", { name: "Check answer" }).click();
    await act2.locator(".lumFeedback.lumWrong").waitFor();
    await act2.getByLabel("Glossary terms").check();
    await act2.getByLabel("Links to other pages").check();
    await act2.getByRole("button", { name: "Check answer" }).click();
    await act2.locator(".lumFeedback.lumRight").waitFor();

    // The keyboard alone: the outline and Back, each focused control showing its outline.
    await page.locator("#lumOutline a", { hasText: "Welcome" }).focus();
    await page.keyboard.press("Enter");
    await content.locator("h2", { hasText: "Welcome" }).waitFor();
    await page.locator("#lumOutline a").nth(2).focus();
    await page.keyboard.press("Enter");
    await H.onPage(page, 3);
    await page.locator("#lumBack").focus();
    await page.keyboard.press("Enter");
    await H.onPage(page, 2);
    assert.notEqual(await page.locator("#lumBack").evaluate((b) => getComputedStyle(b).outlineStyle), "none");

    // A page opened on its own still renders its activity.
    await page.goto(H.fileUrl(dir, "page2.html"));
    assert.equal(await page.locator(".lumActivity input[type=checkbox]").count(), 4);
    assert.equal(await page.title(), "Check your understanding");
    assert.deepEqual(errors, []);
    await page.close();
  });

  // What the frameset's player does for a page (activities, pop-ups) is walked over HTTP by the
  // help's and the LMS tests.
  test("over HTTP: pages reach the frameset's player", () => H.closing(async (keep) => {
    const server = keep(await H.serve({ "/": H.copyModule("Lesson") }));
    const { page, errors } = await H.open(browser, `${server.base}/lessonframeset.html`);
    keep(page);
    await H.onPage(page, 1);
    // The first page may come before the frameset's scripts and run its own; the next cannot.
    await H.next(page, 2);
    await page.frameLocator("#lumContent").locator(".lumActivity").waitFor();
    assert.equal(await page.frames()[1].evaluate(() => parentRef === window.parent.lumoraPlayer), true);
    assert.deepEqual(errors, []);
  }));
});
