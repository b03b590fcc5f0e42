// A SCORM 1.2 LMS frame backed by scorm-again, and an AICC HACP endpoint, both on loopback.
import path from "node:path";
import { repo, serve } from "./harness.mjs";

const scormAgain = path.join(repo, "tests", "player", "node_modules", "scorm-again", "dist");

// The LMS page: window.API is a real run-time; everything the content sets is recorded in
// window.lmsSets, and window.lmsCalls counts the API calls by name.
const LMS_PAGE = `<!DOCTYPE html><html lang="en"><head><meta charset="utf-8"><title>LMS</title>
<script src="/scorm-again/scorm12.js"></script>
<script>
  var params = new URLSearchParams(location.search);
  window.API = new Scorm12API({ logLevel: 5 });
  API.loadFromFlattenedJSON(JSON.parse(params.get("data") || "{}"));
  window.lmsSets = [];
  window.lmsCalls = {};
  ["LMSInitialize", "LMSFinish", "LMSCommit"].forEach(function (name) {
    API.on(name, function () { lmsCalls[name] = (lmsCalls[name] || 0) + 1; });
  });
  API.on("LMSSetValue.cmi.*", function (element, value) { lmsSets.push([element, value]); });
  if (params.get("fail") === "commit") API.LMSCommit = function () { lmsCalls.failedCommit = (lmsCalls.failedCommit || 0) + 1; return "false"; };
</script></head>
<body><iframe id="sco" title="Module" style="width:100%;height:90vh;border:0"></iframe>
<script>document.getElementById("sco").src = params.get("module");</script></body></html>`;

export async function scormServer(moduleDir) {
  return serve({ "/m/": moduleDir, "/scorm-again/": scormAgain }, (req, res, url) => {
    if (url.pathname !== "/lms.html") return false;
    res.writeHead(200, { "Content-Type": "text/html; charset=utf-8" });
    res.end(LMS_PAGE);
  });
}

export const lmsUrl = (base, frameset, data, extra = "") =>
  `${base}/lms.html?module=${encodeURIComponent("/m/" + frameset)}&data=${encodeURIComponent(JSON.stringify(data))}${extra}`;

// What the LMS holds after the content went: the last value of each element set.
export async function lmsState(page) {
  return page.evaluate(() => {
    const last = {};
    for (const [el, v] of window.lmsSets) last[el] = v;
    return { sets: window.lmsSets, last, calls: window.lmsCalls, status: API.cmi.core.lesson_status };
  });
}

export const firstLaunch = (extra = {}) => ({
  "cmi.core.student_id": "S1",
  "cmi.core.student_name": "Learner, Ada",
  "cmi.core.lesson_status": "not attempted",
  "cmi.core.entry": "ab-initio",
  "cmi.core.credit": "credit",
  ...extra,
});

// An AICC HACP endpoint: records every request's parsed form fields and answers GetParam
// with the given [Core] / [Core_Lesson] data. mode "silent" never answers; "error" answers
// error=1.
export function hacpHandler(state) {
  return (req, res, url) => {
    if (url.pathname !== "/hacp") return false;
    let body = "";
    req.on("data", (c) => (body += c));
    req.on("end", () => {
      const fields = Object.fromEntries(new URLSearchParams(body));
      state.requests.push({ body, fields, type: req.headers["content-type"] });
      if (state.mode === "silent") return; // never answers
      const command = (fields.command || "").toLowerCase();
      const head = state.mode === "error" ? "error=1\r\nerror_text=Invalid Command\r\n" : "error=0\r\nerror_text=Successful\r\n";
      let text = head;
      if (command === "getparam" && state.mode !== "error") text += "aicc_data=" + state.getParam;
      res.writeHead(200, { "Content-Type": "text/plain", "Access-Control-Allow-Origin": "*" });
      res.end(text);
    });
  };
}

export const getParamData = ({ location = "", status = "not attempted, ab-initio", coreLesson = "", mastery = "" } = {}) =>
  "\r\n[Core]\r\nStudent_ID=S1\r\nStudent_Name=Learner, Ada\r\nLesson_Location=" + location +
  "\r\nCredit=C\r\nLesson_Status=" + status + "\r\nScore=\r\nTime=00:00:00\r\nLesson_Mode=Normal\r\n[Core_Lesson]\r\n" +
  coreLesson + "\r\n" + (mastery ? "[Student_Data]\r\nMastery_Score=" + mastery + "\r\n" : "");

// Checks every value the content set against the SCORM 1.2 data model's strict limits, which
// scorm-again itself is lenient about.
export function strictViolations(sets) {
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
