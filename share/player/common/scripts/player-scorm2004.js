/* Lumora player: the session's connection to a SCORM 2004 4th Edition LMS, whose API_1484_11
   lives in a frame above the module or above its opener. Completion and success go apart: a
   Lesson or a Survey completes when finished; an Evaluation completes when submitted and passes
   or fails against the LMS's scaled passing score (success stays unknown without one). */
function LumScorm2004(api) {
  this.mode = "scorm2004";
  this.api = api;
}

LumScorm2004.prototype.call = function (name, a, b) { return lumApiCall(this.api, name, a, b); };

// An element's value, or "" when the LMS holds none or refuses.
LumScorm2004.prototype.get = function (el) {
  var v = this.call("GetValue", el);
  return this.call("GetLastError") === "0" ? v : "";
};

LumScorm2004.prototype.start = function (s, info) {
  if (this.call("Initialize") !== "true") return false;
  var completion = this.get("cmi.completion_status"), success = this.get("cmi.success_status");
  info.status = success === "passed" || success === "failed" ? success
    : completion === "completed" || completion === "incomplete" ? completion : "";
  info.entry = this.get("cmi.entry");
  info.location = this.get("cmi.location");
  info.suspend = this.get("cmi.suspend_data");
  var mode = this.get("cmi.mode");
  s.record = mode === "" || mode === "normal";
  // The pass mark in percent, as the quiz judges: -1..1 scaled, hundredths kept exact.
  var pass = this.get("cmi.scaled_passing_score");
  info.mastery = pass !== "" && isFinite(+pass) ? String(Math.round(Math.max(0, +pass) * 10000) / 100) : "";
  return true;
};

LumScorm2004.prototype.commit = function (s) {
  if (!s.record) {
    // Browse and review: the LMS is told nothing that counts.
    s.pending = [];
    s.dirty = false;
    return true;
  }
  var self = this, ok = true, st = s.status, score = s.values.score;
  var set = function (el, v) {
    if (self.call("SetValue", el, v) !== "true") ok = false;
  };
  if (s.values.location !== "") set("cmi.location", s.values.location.substring(0, 1000));
  if (s.values.suspend.length <= 64000) set("cmi.suspend_data", s.values.suspend);
  if (st === "incomplete" || LUM_FINAL[st]) set("cmi.completion_status", LUM_FINAL[st] ? "completed" : "incomplete");
  if (st === "passed" || st === "failed") set("cmi.success_status", st);
  else if (score !== "" && st === "completed") set("cmi.success_status", "unknown");
  if (score !== "") {
    set("cmi.score.min", "0");
    set("cmi.score.max", "100");
    set("cmi.score.raw", score);
    set("cmi.score.scaled", String(+score / 100));
  }
  set("cmi.exit", s.isFinal() ? "normal" : "suspend");
  set("cmi.session_time", lumDuration(Date.now() - s.started));
  while (s.pending.length) {
    var it = s.pending[0];
    var p = "cmi.interactions." + (parseInt(this.get("cmi.interactions._count"), 10) || 0) + ".";
    // The id first: every other field of an interaction depends on it.
    if (this.call("SetValue", p + "id", "urn:lumora:" + it.id) !== "true") break; // refused: keep it
    set(p + "type", it.type);
    set(p + "timestamp", lumTimestamp(it.time));
    if (it.type === "likert") {
      set(p + "learner_response", String(it.chosen[0] + 1));
      set(p + "result", "neutral");
    } else {
      set(p + "learner_response", lumChoiceIds(it.chosen));
      set(p + "correct_responses.0.pattern", lumChoiceIds(it.correct));
      set(p + "result", it.right ? "correct" : "incorrect");
    }
    s.pending.shift();
  }
  if (this.call("Commit") === "true" && ok) s.dirty = false;
  return !s.dirty;
};

// Terminate exactly once; the session calls nothing after it.
LumScorm2004.prototype.finish = function (s) {
  this.commit(s);
  this.call("Terminate");
};

lumAddRuntime(30, function (win) {
  var api = lumFindLaunchAPI(win, "API_1484_11");
  return api ? new LumScorm2004(api) : null;
});
