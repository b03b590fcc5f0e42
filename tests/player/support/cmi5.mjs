// A cmi5 LMS with its LRS on loopback, on an origin of its own (the module is served from
// another): it launches an AU as cmi5 says, serves each launch's fetch URL once, keeps the
// state documents (LMS.LaunchData written before launch), the learner preferences and every
// statement, and can refuse statements or fall silent. cmi5Violations checks what an AU sent.
import { randomUUID } from "node:crypto";
import { createRequire } from "node:module";
import { serve } from "./harness.mjs";

const validateStatement = createRequire(import.meta.url)("@learninglocker/xapi-validation").default;

const CMI5 = "https://w3id.org/xapi/cmi5/";
const CATEGORY = CMI5 + "context/categories/cmi5";
const MOVEON = CMI5 + "context/categories/moveon";
const SESSION = CMI5 + "context/extensions/sessionid";
const MASTERY = CMI5 + "context/extensions/masteryscore";
const VERB = (v) => "http://adlnet.gov/expapi/verbs/" + v;
const DEFINED = ["initialized", "completed", "passed", "failed", "terminated"].map(VERB);
const PUBLISHER_ID = "urn:lumora:LUM-0123456789ABCDEF:au";

const CORS = {
  "Access-Control-Allow-Origin": "*",
  "Access-Control-Allow-Headers": "Authorization, Content-Type, X-Experience-API-Version",
  "Access-Control-Allow-Methods": "GET, PUT, POST, DELETE",
};

export async function cmi5Lms() {
  const lms = {
    statements: [], // { statement, arrived }
    launches: [],   // what each launch was given
    fetches: {},    // fetch key -> calls
    states: new Map(),
    violations: [], // what the AU did that the LMS forbids
    preferencesRead: 0,
    refuse: 0,      // statement requests still to answer 503
    silent: false,  // statement requests get no answer at all
  };
  const tokens = new Set();
  const reply = (res, status, body, type = "application/json") => {
    res.writeHead(status, { ...CORS, "Content-Type": type });
    res.end(typeof body === "string" ? body : JSON.stringify(body));
  };
  const stateKey = (q) => [q.get("stateId"), q.get("activityId"), q.get("agent"), q.get("registration")].join("|");

  const server = await serve({}, (req, res, url) => {
    let body = "";
    req.on("data", (c) => (body += c));
    req.on("end", () => {
      const q = url.searchParams;
      if (req.method === "OPTIONS") return reply(res, 204, "");
      if (url.pathname === "/return") return reply(res, 200, "<title>Back in the LMS</title><h1>Back in the LMS</h1>", "text/html");
      const fetchKey = /^\/fetch\/(\w+)$/.exec(url.pathname)?.[1];
      if (fetchKey) {
        const calls = (lms.fetches[fetchKey] = (lms.fetches[fetchKey] ?? 0) + 1);
        if (req.method !== "POST") lms.violations.push("fetch URL not POSTed");
        if (calls > 1) return reply(res, 200, { "error-code": "1", "error-text": "The authorization token has already been returned." });
        const token = Buffer.from(`${fetchKey}:${randomUUID()}`).toString("base64");
        tokens.add(token);
        return reply(res, 200, { "auth-token": token });
      }
      if (!url.pathname.startsWith("/xapi/")) return reply(res, 404, {});
      if (!tokens.has((req.headers.authorization ?? "").replace(/^Basic /, ""))) {
        lms.violations.push(`${req.method} ${url.pathname} without the session's token`);
        return reply(res, 401, {});
      }
      if (!req.headers["x-experience-api-version"]) lms.violations.push(`${req.method} ${url.pathname} without X-Experience-API-Version`);
      const path = url.pathname.substring("/xapi/".length);
      if (path === "statements" && req.method === "POST") {
        if (lms.silent) return; // never answers
        if (lms.refuse > 0) {
          lms.refuse--;
          return reply(res, 503, { error: "try later" });
        }
        const list = [].concat(JSON.parse(body));
        for (const statement of list) lms.statements.push({ statement, arrived: Date.now() });
        return reply(res, 200, list.map((s) => s.id));
      }
      if (path === "activities/state") {
        const key = stateKey(q);
        if (q.get("stateId") === "LMS.LaunchData" && req.method !== "GET") {
          lms.violations.push(`${req.method} of LMS.LaunchData`);
          return reply(res, 403, {});
        }
        if (req.method === "GET") return lms.states.has(key) ? reply(res, 200, lms.states.get(key)) : reply(res, 404, {});
        if (req.method === "PUT" || req.method === "POST") lms.states.set(key, JSON.parse(body));
        if (req.method === "DELETE") lms.states.delete(key);
        return reply(res, 204, "");
      }
      if (path === "agents/profile" && q.get("profileId") === "cmi5LearnerPreferences") {
        lms.preferencesRead++;
        return reply(res, 200, { languagePreference: "en-US,fr-FR", audioPreference: "off" });
      }
      return reply(res, 404, {});
    });
  });

  // Prepares a session as an LMS does (LMS.LaunchData) and returns the AU's launch URL. A
  // launch of the same registration is a later session of the same enrolment.
  lms.launchUrl = (auUrl, { registration = randomUUID(), launchMode = "Normal", masteryScore, moveOn = "Completed", returnURL } = {}) => {
    const actor = { objectType: "Agent", account: { homePage: "http://lms.example", name: "learner-1" } };
    const activityId = `http://lms.example/activities/${registration}/au`;
    const sessionId = randomUUID();
    const launchData = {
      contextTemplate: {
        contextActivities: { grouping: [{ objectType: "Activity", id: PUBLISHER_ID }] },
        extensions: { [SESSION]: sessionId },
      },
      launchMode, moveOn,
      ...(masteryScore !== undefined && { masteryScore }),
      ...(returnURL && { returnURL: server.base + returnURL }),
    };
    const agent = JSON.stringify(actor);
    lms.states.set(["LMS.LaunchData", activityId, agent, registration].join("|"), launchData);
    const key = randomUUID().replaceAll("-", "");
    lms.launches.push({ actor, activityId, registration, sessionId, launchData, fetchKey: key });
    const params = new URLSearchParams({ endpoint: `${server.base}/xapi/`, fetch: `${server.base}/fetch/${key}`,
      actor: agent, registration, activityId });
    return `${auUrl}?${params}`;
  };
  lms.base = server.base;
  lms.close = server.close;
  // The statements of one launch's session, in the order they arrived.
  lms.session = (launch) => lms.statements.map((s) => s.statement)
    .filter((s) => s.context?.extensions?.[SESSION] === launch.sessionId);
  lms.verbs = (launch) => lms.session(launch).map((s) => s.verb.id.replace(/^.*\//, ""));
  return lms;
}

const categories = (s) => [].concat(s.context?.contextActivities?.category ?? []).map((a) => a.id);
const includes = (whole, part) => typeof part !== "object" || part === null ? whole === part
  : Array.isArray(part) ? part.every((p) => [].concat(whole ?? []).some((w) => includes(w, p)))
  : Object.keys(part).every((k) => whole && includes(whole[k], part[k]));

// Everything the AU's statements break: xAPI validity, and cmi5's rules for each session
// (initialized first, terminated last, no cmi5 verb twice, at most one of passed and failed,
// the context template kept, categories, results, durations, the mastery score, only
// initialized and terminated outside Normal mode) and for each registration (completed and
// passed at most once, no failed after passed).
export function cmi5Violations(lms) {
  const bad = [...lms.violations];
  const seen = new Set();
  const byRegistration = new Map();
  for (const launch of lms.launches) {
    const list = lms.session(launch);
    if (!list.length) continue;
    const verbs = list.map((s) => s.verb.id);
    const where = (s) => `${launch.launchData.launchMode} session ${launch.sessionId.slice(0, 8)}: ${s.verb.id.replace(/^.*\//, "")}`;
    if (verbs[0] !== VERB("initialized")) bad.push(`${where(list[0])} is the first statement`);
    if (verbs.at(-1) !== VERB("terminated")) bad.push(`${where(list.at(-1))} is the last statement`);
    for (let i = 1; i < list.length; i++)
      if (list[i].timestamp < list[i - 1].timestamp) bad.push(`${where(list[i])} is out of timestamp order`);
    for (const v of DEFINED) if (verbs.filter((x) => x === v).length > 1) bad.push(`${v} twice in a session`);
    if (verbs.filter((x) => x === VERB("passed") || x === VERB("failed")).length > 1) bad.push("passed and failed in one session");
    if (launch.launchData.launchMode !== "Normal" && verbs.some((v) => v !== VERB("initialized") && v !== VERB("terminated")))
      bad.push(`${launch.launchData.launchMode} session sent ${verbs.join(" ")}`);
    const registration = byRegistration.get(launch.registration) ?? [];
    byRegistration.set(launch.registration, registration.concat(verbs));
    for (const s of list) {
      for (const w of validateStatement(s)) bad.push(`${where(s)}: xAPI ${w.path.join(".")} ${w.typeName ?? w.message}`);
      if (seen.has(s.id)) bad.push(`${where(s)}: statement id used twice`);
      seen.add(s.id);
      if (JSON.stringify(s.actor) !== JSON.stringify(launch.actor)) bad.push(`${where(s)}: another actor`);
      if (s.context?.registration !== launch.registration) bad.push(`${where(s)}: another registration`);
      if (!includes(s.context, launch.launchData.contextTemplate)) bad.push(`${where(s)}: the context template is not kept`);
      if (!/Z$/.test(s.timestamp)) bad.push(`${where(s)}: timestamp not in UTC`);
      const defined = DEFINED.includes(s.verb.id), cats = categories(s), r = s.result ?? {};
      const judged = "success" in r || "completion" in r;
      if (defined !== cats.includes(CATEGORY)) bad.push(`${where(s)}: cmi5 category ${defined ? "missing" : "on an allowed statement"}`);
      if ((defined && judged) !== cats.includes(MOVEON)) bad.push(`${where(s)}: moveon category wrong`);
      if (!defined) continue;
      const verb = s.verb.id.replace(/^.*\//, "");
      if (s.object.id !== launch.activityId) bad.push(`${where(s)}: object is not the AU`);
      if ("score" in r !== (verb === "passed" || verb === "failed")) bad.push(`${where(s)}: score`);
      if (r.success !== { passed: true, failed: false }[verb]) bad.push(`${where(s)}: success ${r.success}`);
      if (r.completion !== (verb === "completed" ? true : undefined)) bad.push(`${where(s)}: completion ${r.completion}`);
      if (["completed", "passed", "failed", "terminated"].includes(verb) && !r.duration) bad.push(`${where(s)}: no duration`);
      const mastery = launch.launchData.masteryScore;
      if (verb === "passed" || verb === "failed") {
        if (s.context.extensions?.[MASTERY] !== mastery) bad.push(`${where(s)}: masteryscore extension`);
        if ((r.score?.scaled >= mastery) !== (verb === "passed")) bad.push(`${where(s)}: scaled ${r.score?.scaled} against ${mastery}`);
      }
    }
  }
  for (const [registration, verbs] of byRegistration) {
    if (verbs.filter((v) => v === VERB("completed")).length > 1) bad.push(`completed twice in registration ${registration}`);
    if (verbs.filter((v) => v === VERB("passed")).length > 1) bad.push(`passed twice in registration ${registration}`);
    const passed = verbs.indexOf(VERB("passed"));
    if (passed >= 0 && verbs.lastIndexOf(VERB("failed")) > passed) bad.push(`failed after passed in registration ${registration}`);
  }
  return bad;
}
