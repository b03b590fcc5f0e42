// SCORM 1.2 and SCORM 2004 LMS frames backed by scorm-again, and an AICC HACP endpoint, all on
// loopback.
import assert from "node:assert/strict";
import path from "node:path";
import { closing, copyModule, FRAMESET, open, repo, serve, waitFor } from "./harness.mjs";

const scormAgain = path.join(repo, "tests", "player", "node_modules", "scorm-again", "dist");

// An LMS page: `runtime` is scorm-again's run-time, set up and watched by `script`. The module
// opens in the page's frame, or with popup=1 in a window of its own.
const lmsPage = (runtime, script) => `<!DOCTYPE html><html lang="en"><head><meta charset="utf-8"><title>LMS</title>
<script src="/scorm-again/${runtime}"></script>
<script>
  var params = new URLSearchParams(location.search);
${script}</script></head>
<body><iframe id="sco" title="Module" style="width:100%;height:90vh;border:0"></iframe>
<script>
  if (params.get("popup")) window.sco = window.open(params.get("module"), "sco");
  else document.getElementById("sco").src = params.get("module");
</script></body></html>`;

// SCORM 1.2: window.API is a real run-time; everything the content sets is recorded in
// window.lmsSets, and window.lmsCalls counts the API calls by name. With fail=commit every
// Commit answers "false".
const LMS_PAGE = lmsPage("scorm12.js", `
  window.API = new Scorm12API({ logLevel: 5 });
  API.loadFromFlattenedJSON(JSON.parse(params.get("data") || "{}"));
  window.lmsSets = [];
  window.lmsCalls = {};
  ["LMSInitialize", "LMSFinish", "LMSCommit"].forEach(function (name) {
    API.on(name, function () { lmsCalls[name] = (lmsCalls[name] || 0) + 1; });
  });
  API.on("LMSSetValue.cmi.*", function (element, value) { lmsSets.push([element, value]); });
  if (params.get("fail") === "commit") API.LMSCommit = function () { lmsCalls.failedCommit = (lmsCalls.failedCommit || 0) + 1; return "false"; };
`);

// SCORM 2004: window.API_1484_11 is a real run-time whose every call is logged in order
// (window.lmsLog: [name, arguments..., result]). With fail=all every SetValue and Commit
// answers "false".
const LMS_2004_PAGE = lmsPage("scorm2004.js", `
  window.API_1484_11 = new Scorm2004API({ logLevel: 5 });
  API_1484_11.loadFromFlattenedJSON(JSON.parse(params.get("data") || "{}"));
  window.lmsLog = [];
  ["Initialize", "Terminate", "GetValue", "SetValue", "Commit"].forEach(function (name) {
    var real = API_1484_11[name].bind(API_1484_11);
    API_1484_11[name] = function () {
      var args = Array.prototype.slice.call(arguments);
      var failed = params.get("fail") === "all" && (name === "SetValue" || name === "Commit");
      var result = failed ? "false" : real.apply(null, args);
      lmsLog.push([name].concat(args, [String(result)]));
      return result;
    };
  });
`);

export async function scormServer(moduleDir) {
  return serve({ "/m/": moduleDir, "/scorm-again/": scormAgain }, (req, res, url) => {
    const page = { "/lms.html": LMS_PAGE, "/lms2004.html": LMS_2004_PAGE }[url.pathname];
    if (!page) return false;
    res.writeHead(200, { "Content-Type": "text/html; charset=utf-8" });
    res.end(page);
  });
}

export const lmsUrl = (base, frameset, data, extra = "", page = "lms.html") =>
  `${base}/${page}?module=${encodeURIComponent("/m/" + frameset)}&data=${encodeURIComponent(JSON.stringify(data))}${extra}`;

// Runs `body` over a fresh copy of a module of `type` (from its template, or the folder `from`)
// served beside the LMS page `lmsPage`; go(data, extra) (re)launches it there. The learner
// never meets a script error.
export const inScormLms = (browser, type, lmsPage, body, from) => closing(async (keep) => {
  const dir = copyModule(type, from);
  const server = keep(await scormServer(dir));
  const { page, errors } = await open(browser);
  keep(page);
  const go = (data, extra) => page.goto(lmsUrl(server.base, FRAMESET[type], data, extra, lmsPage));
  const result = await body({ dir, page, go, server, sco: page.frameLocator("#sco") });
  assert.deepEqual(errors, []);
  return result;
});

// What the LMS holds after the content went: the last value of each element set.
export async function lmsState(page) {
  return page.evaluate(() => {
    const last = {};
    for (const [el, v] of window.lmsSets) last[el] = v;
    return { sets: window.lmsSets, last, calls: window.lmsCalls, status: API.cmi.core.lesson_status };
  });
}

// Takes the module out of the LMS frame so it commits and finishes, and returns what the LMS
// holds; every value the module set keeps the data model's strict limits.
export async function leaveLms(page) {
  await page.evaluate(() => (document.getElementById("sco").src = "about:blank"));
  await waitFor(() => page.evaluate(() => (window.lmsCalls.LMSFinish || 0) > 0));
  const s = await lmsState(page);
  assert.deepEqual(strictViolations(s.sets), []);
  return s;
}

// The values set for every interaction's field ending in `end`, in order.
export const interactions = (s, end) => s.sets.filter(([el]) => el.startsWith("cmi.interactions.") && el.endsWith(end)).map(([, v]) => v);

export const firstLaunch = (extra = {}) => ({
  "cmi.core.student_id": "S1",
  "cmi.core.student_name": "Learner, Ada",
  "cmi.core.lesson_status": "not attempted",
  "cmi.core.entry": "ab-initio",
  "cmi.core.credit": "credit",
  ...extra,
});

// An AICC HACP endpoint: records every request's parsed form fields with the times it arrived
// and was answered, and answers GetParam with the given [Core] / [Core_Lesson] data, after
// state.delay ms when set. mode "silent" never answers; "error" answers error=1.
export function hacpHandler(state) {
  return (req, res, url) => {
    if (url.pathname !== "/hacp") return false;
    let body = "";
    req.on("data", (c) => (body += c));
    req.on("end", () => {
      const fields = Object.fromEntries(new URLSearchParams(body));
      const request = { body, fields, type: req.headers["content-type"], arrived: Date.now() };
      state.requests.push(request);
      if (state.mode === "silent") return; // never answers
      const command = (fields.command || "").toLowerCase();
      const head = state.mode === "error" ? "error=1\r\nerror_text=Invalid Command\r\n" : "error=0\r\nerror_text=Successful\r\n";
      let text = head;
      if (command === "getparam" && state.mode !== "error") text += "aicc_data=" + state.getParam;
      setTimeout(() => {
        request.answered = Date.now();
        res.writeHead(200, { "Content-Type": "text/plain", "Access-Control-Allow-Origin": "*" });
        res.end(text);
      }, state.delay ?? 0);
    });
  };
}

export const getParamData = ({ location = "", status = "not attempted, ab-initio", coreLesson = "", mastery = "" } = {}) =>
  "\r\n[Core]\r\nStudent_ID=S1\r\nStudent_Name=Learner, Ada\r\nLesson_Location=" + location +
  "\r\nCredit=C\r\nLesson_Status=" + status + "\r\nScore=\r\nTime=00:00:00\r\nLesson_Mode=Normal\r\n[Core_Lesson]\r\n" +
  coreLesson + "\r\n" + (mastery ? "[Student_Data]\r\nMastery_Score=" + mastery + "\r\n" : "");

// Checks every value the content set against the SCORM 1.2 data model's strict limits, which
// scorm-again itself is lenient about.
function strictViolations(sets) {
  const bad = [];
  const vocab = {
    "cmi.core.lesson_status": /^(passed|completed|failed|incomplete|browsed)$/,
    "cmi.core.exit": /^(time-out|suspend|logout|)$/,
    "cmi.core.session_time": /^\d{2,4}:\d{2}:\d{2}(\.\d{1,2})?$/,
    "cmi.core.score.raw": /^(100|\d{1,2})(\.\d+)?$/,
    "cmi.core.score.min": /^(100|\d{1,2})(\.\d+)?$/,
    "cmi.core.score.max": /^(100|\d{1,2})(\.\d+)?$/,
  };
  for (const [el, v] of sets) {
    if (vocab[el] && !vocab[el].test(v)) bad.push(`${el}=${v}`);
    if (el === "cmi.suspend_data" && v.length > 4096) bad.push("suspend_data too long");
    if (el === "cmi.core.lesson_location" && v.length > 255) bad.push("lesson_location too long");
    if (/^cmi\.interactions\.\d+\.id$/.test(el) && !/^[A-Za-z0-9_.:-]{1,255}$/.test(v)) bad.push(`${el}=${v}`);
    if (/\.type$/.test(el) && !/^(true-false|choice|fill-in|matching|performance|sequencing|likert|numeric)$/.test(v)) bad.push(`${el}=${v}`);
    if (/\.result$/.test(el) && !/^(correct|wrong|unanticipated|neutral|-?\d+(\.\d+)?)$/.test(v)) bad.push(`${el}=${v}`);
  }
  return bad;
}

// The SCORM 2004 launch data of a learner's first attempt.
export const firstLaunch2004 = (extra = {}) => ({
  "cmi.learner_id": "S1",
  "cmi.learner_name": "Learner, Ada",
  "cmi.completion_status": "unknown",
  "cmi.success_status": "unknown",
  "cmi.entry": "ab-initio",
  "cmi.credit": "credit",
  "cmi.mode": "normal",
  ...extra,
});

const TIME_2004 = /^(19[7-9]\d|20[0-2]\d|203[0-8])-(0[1-9]|1[0-2])-(0[1-9]|[12]\d|3[01])T([01]\d|2[0-3]):[0-5]\d:[0-5]\d(\.\d{1,2})?(Z|[+-]\d\d(:\d\d)?)?$/;
const DECIMAL = /^-?\d+(\.\d+)?$/;
const CHOICE = /^[\w.-]{1,250}(\[,\][\w.-]{1,250})*$/;

// Checks a SCORM 2004 session's calls against the data model's strict limits and the run-time's
// order, which scorm-again is lenient about: Initialize first, Terminate once and last, every
// interaction's id before its other fields, values in their vocabularies and sizes, no value
// the run-time refused, and no status set back.
export function strict2004Violations(log) {
  const bad = [];
  const names = log.map((c) => c[0]);
  if (names[0] !== "Initialize") bad.push("Initialize is not the first call");
  if (names.filter((n) => n === "Terminate").length !== 1) bad.push("Terminate not called exactly once");
  if (names.includes("Terminate") && names.at(-1) !== "Terminate") bad.push("a call after Terminate");
  const vocab = {
    "cmi.completion_status": /^(completed|incomplete|unknown)$/,
    "cmi.success_status": /^(passed|failed|unknown)$/,
    "cmi.exit": /^(timeout|suspend|logout|normal|)$/,
    "cmi.session_time": /^PT\d+H\d{1,2}M\d{1,2}(\.\d{1,2})?S$/,
    "cmi.score.raw": DECIMAL, "cmi.score.min": DECIMAL, "cmi.score.max": DECIMAL,
  };
  const withId = new Set();
  let completion = "", success = "";
  for (const call of log) {
    const [name, el, v] = call;
    if (name !== "SetValue") continue;
    if (call.at(-1) !== "true") bad.push(`${el}=${v} refused`);
    if (vocab[el] && !vocab[el].test(v)) bad.push(`${el}=${v}`);
    if (el === "cmi.score.scaled" && !(DECIMAL.test(v) && +v >= -1 && +v <= 1)) bad.push(`${el}=${v}`);
    if (el === "cmi.location" && v.length > 1000) bad.push("location too long");
    if (el === "cmi.suspend_data" && v.length > 64000) bad.push("suspend_data too long");
    if (el === "cmi.completion_status") {
      if (completion === "completed" && v !== "completed") bad.push("completion set back");
      completion = v;
    }
    if (el === "cmi.success_status") {
      if (success === "passed" && v !== "passed") bad.push("success set back");
      success = v;
    }
    const m = /^cmi\.interactions\.(\d+)\.(.*)$/.exec(el);
    if (!m) continue;
    const [, n, field] = m;
    if (field === "id") {
      withId.add(n);
      if (!/^[A-Za-z][A-Za-z0-9+.-]*:\S{1,3990}$/.test(v)) bad.push(`${el}=${v}`);
    } else if (!withId.has(n)) bad.push(`${el} before its id`);
    if (field === "type" && !/^(true-false|choice|fill-in|long-fill-in|matching|performance|sequencing|likert|numeric|other)$/.test(v)) bad.push(`${el}=${v}`);
    if (field === "timestamp" && !TIME_2004.test(v)) bad.push(`${el}=${v}`);
    if ((field === "learner_response" || /^correct_responses\.\d+\.pattern$/.test(field)) && !CHOICE.test(v)) bad.push(`${el}=${v}`);
    if (field === "result" && !/^(correct|incorrect|unanticipated|neutral|-?\d+(\.\d+)?)$/.test(v)) bad.push(`${el}=${v}`);
  }
  return bad;
}
