/* Lumora player: the session as a cmi5 assignable unit. Launched with endpoint, fetch, actor,
   registration and activityId, it fetches its token once, reads LMS.LaunchData and the
   learner's preferences, keeps bookmark and suspend data in a state document of its own (so a
   later session of the same registration resumes), and sends cmi5's statements in order:
   initialized first; completed once when finished; passed or failed for an Evaluation judged
   against the mastery score; one answered statement per answer; terminated last. Outside the
   Normal launch mode only initialized and terminated go. An LRS that errs or is silent never
   holds the learner up; a statement it refused goes once more, with the next or at exit.
   Written for the few requests cmi5 needs; a general xAPI library would outweigh the player. */
var LUM_VERB = "http://adlnet.gov/expapi/verbs/";
var LUM_CMI5 = "https://w3id.org/xapi/cmi5/";
var LUM_STATE = "lumora.progress"; // this module's own state document

// A random (version 4) UUID; crypto.randomUUID needs a secure context, which an LMS may not give.
function lumUuid() {
  var b = new Uint8Array(16), h = "";
  try {
    crypto.getRandomValues(b);
  } catch (e) {
    for (var r = 0; r < 16; r++) b[r] = Math.floor(Math.random() * 256);
  }
  b[6] = (b[6] & 15) | 64;
  b[8] = (b[8] & 63) | 128;
  for (var i = 0; i < 16; i++) h += (i === 4 || i === 6 || i === 8 || i === 10 ? "-" : "") + (b[i] + 256).toString(16).substring(1);
  return h;
}

// A promise that gives up after ms with `value`.
function lumWithin(promise, ms, value) {
  return Promise.race([promise, new Promise(function (done) { setTimeout(done, ms, value); })]);
}

function LumCmi5(p) {
  this.mode = "cmi5";
  this.endpoint = p.endpoint.replace(/\/?$/, "/");
  this.fetchUrl = p.fetch;
  this.actor = p.actor;
  this.registration = p.registration;
  this.activityId = p.activityId;
  this.returnURL = "";
  this.tail = Promise.resolve();
  this.gone = false;       // the session ended: the queue sends nothing more
  this.onWay = null;
  this.outbox = [];        // statements made, not yet handed to the LRS
  this.retry = [];         // statements refused once: they go again with the next
  this.sendWaiting = false;
  this.stateWaiting = false;
  this.reported = "";      // the status the LMS was last told of in this registration
}

LumCmi5.prototype.agent = function () { return JSON.stringify(this.actor); };

// One xAPI request with the session's token; resolves with the response, rejects when there is
// none within five seconds. A request that fits the browser's allowance outlives the page
// (keepalive), so one on its way when the window closes still arrives.
LumCmi5.prototype.request = function (method, path, query, body, atExit) {
  var url = this.endpoint + path, sep = "?";
  for (var k in query) {
    url += sep + encodeURIComponent(k) + "=" + encodeURIComponent(query[k]);
    sep = "&";
  }
  var init = { method: method, credentials: "omit",
    headers: { Authorization: "Basic " + this.token, "X-Experience-API-Version": "1.0.3" } };
  if (body !== undefined) {
    init.headers["Content-Type"] = "application/json";
    init.body = JSON.stringify(body);
    init.keepalive = init.body.length < 60000;
  }
  var ctrl = !atExit && typeof AbortController === "function" ? new AbortController() : null;
  if (ctrl) {
    init.signal = ctrl.signal;
    setTimeout(function () { ctrl.abort(); }, 5000);
  }
  return lumOnWay(this, fetch(url, init)).then(function (r) {
    if (!r.ok && r.status !== 404) throw r;
    return r;
  });
};

// A document as JSON; null when there is none or it is no JSON object.
LumCmi5.prototype.getJson = function (path, query) {
  return this.request("GET", path, query).then(function (r) {
    return r.status === 404 ? null : r.json();
  }).then(function (v) {
    return v && typeof v === "object" ? v : null;
  }, function () { return null; });
};

LumCmi5.prototype.stateQuery = function (stateId) {
  return { stateId: stateId, activityId: this.activityId, agent: this.agent(), registration: this.registration };
};

LumCmi5.prototype.start = function (s, info) {
  var self = this, abandoned = false;
  // The fetch URL serves one token, once: it is asked exactly once.
  var work = fetch(this.fetchUrl, { method: "POST", credentials: "omit" }).then(function (r) {
    return r.json();
  }).then(function (answer) {
    if (abandoned || !answer || typeof answer["auth-token"] !== "string") return false;
    self.token = answer["auth-token"];
    return Promise.all([self.getJson("activities/state", self.stateQuery("LMS.LaunchData")),
      self.getJson("agents/profile", { agent: self.agent(), profileId: "cmi5LearnerPreferences" }),
      self.getJson("activities/state", self.stateQuery(LUM_STATE))]).then(function (got) {
      var launch = got[0];
      if (abandoned || !launch || !launch.contextTemplate || typeof launch.contextTemplate !== "object") return false;
      self.context = launch.contextTemplate;
      s.record = !launch.launchMode || launch.launchMode === "Normal";
      var m = launch.masteryScore;
      self.mastery = typeof m === "number" && m >= 0 && m <= 1 ? m : null;
      info.mastery = self.mastery === null ? "" : String(Math.round(self.mastery * 10000) / 100);
      self.returnURL = typeof launch.returnURL === "string" ? launch.returnURL : "";
      // Read as cmi5 asks; the player has no audio and speaks the module's language. moveOn is the
      // LMS's to weigh: the AU reports what happened either way.
      self.preferences = got[1] || {};
      var mine = got[2];
      info.entry = mine ? "resume" : "ab-initio";
      if (mine) {
        info.location = String(mine.location || "");
        info.suspend = String(mine.suspend || "");
        info.status = LUM_RANK[mine.status] ? String(mine.status) : "";
      }
      self.reported = info.status;
      self.started = Date.now();
      self.post([self.statement("initialized")]);
      return true;
    });
  }).then(null, function () { return false; });
  return lumWithin(work, 4000, false).then(function (connected) {
    abandoned = !connected;
    return connected;
  });
};

// Jobs go one at a time, each when the one before was answered or given up on.
LumCmi5.prototype.queue = function (job) {
  var self = this;
  var done = this.tail.then(function () { return self.gone ? false : job(); }).then(null, function () { return false; });
  this.tail = done;
  return done;
};

// A statement of this session: the LMS's context template, never altered, with what cmi5 adds.
// kind: "defined" (a cmi5 verb about the AU) or "allowed" (any other, e.g. answered).
LumCmi5.prototype.statement = function (verb, result, object, kind) {
  var context = JSON.parse(JSON.stringify(this.context)), defined = kind !== "allowed";
  if (!context.registration) context.registration = this.registration;
  var acts = context.contextActivities = context.contextActivities || {};
  var category = acts.category ? [].concat(acts.category) : [];
  var add = function (id) {
    if (!category.some(function (a) { return a && a.id === id; })) category.push({ id: id, objectType: "Activity" });
  };
  if (defined) add(LUM_CMI5 + "context/categories/cmi5");
  if (defined && result && ("success" in result || "completion" in result)) add(LUM_CMI5 + "context/categories/moveon");
  if (category.length) acts.category = category;
  if (defined && result && "success" in result && this.mastery !== null) {
    var ext = context.extensions = context.extensions || {};
    var key = LUM_CMI5 + "context/extensions/masteryscore";
    if (!(key in ext)) ext[key] = this.mastery;
  }
  var st = { id: lumUuid(), timestamp: new Date().toISOString(), actor: this.actor,
    verb: { id: LUM_VERB + verb, display: { "en-US": verb } },
    object: object || { objectType: "Activity", id: this.activityId }, context: context };
  if (result) st.result = result;
  return st;
};

// What the learner did since the last commit: an answered statement per answer, then the
// judgement once the module is finished.
LumCmi5.prototype.news = function (s) {
  var out = [], st = s.status, duration = lumDuration(Date.now() - this.started);
  while (s.pending.length) out.push(this.answered(s.pending.shift()));
  if (LUM_FINAL[st] && !LUM_FINAL[this.reported]) out.push(this.statement("completed", { completion: true, duration: duration }));
  var judged = (st === "passed" || st === "failed") && this.mastery !== null && this.reported !== st && this.reported !== "passed";
  if (judged) {
    var raw = +s.values.score;
    out.push(this.statement(st, { success: st === "passed", duration: duration,
      score: { scaled: raw / 100, raw: raw, min: 0, max: 100 } }));
  }
  if (LUM_FINAL[st]) this.reported = st;
  return out;
};

LumCmi5.prototype.answered = function (i) {
  var likert = i.type === "likert", base = this.activityId.replace(/#.*$/, "");
  var def = { type: "http://adlnet.gov/expapi/activities/cmi.interaction", interactionType: i.type };
  if (i.text) def.description = { en: i.text.substring(0, 1000) };
  var options = i.labels.map(function (label, j) {
    var o = { id: String(likert ? j + 1 : j) };
    if (label) o.description = { en: label.substring(0, 250) };
    return o;
  });
  var result = { response: likert ? String(i.chosen[0] + 1) : lumChoiceIds(i.chosen) };
  if (likert) def.scale = options;
  else {
    def.choices = options;
    def.correctResponsesPattern = [lumChoiceIds(i.correct)];
    result.success = !!i.right;
  }
  return this.statement("answered", result, { objectType: "Activity", id: base + "/interactions/" + i.id, definition: def }, "allowed");
};

// Queues statements. They go in one request with the others still waiting when their turn comes.
LumCmi5.prototype.post = function (list) {
  var self = this;
  Array.prototype.push.apply(this.outbox, list);
  if (this.sendWaiting) return this.tail;
  this.sendWaiting = true;
  return this.queue(function () {
    self.sendWaiting = false;
    return self.send(self.outbox.splice(0));
  });
};

// Posts statements after the ones refused once before. A refusal keeps each for one more try.
LumCmi5.prototype.send = function (list, atExit) {
  var self = this, batch = this.retry.concat(list.map(function (st) { return { st: st, tries: 0 }; }));
  this.retry = [];
  if (!batch.length) return Promise.resolve(true);
  return this.request("POST", "statements", {}, batch.map(function (b) { return b.st; }), atExit).then(function () {
    return true;
  }, function () {
    self.retry = batch.filter(function (b) { return ++b.tries < 2; });
    return false;
  });
};

// The learner's place in this module's own state document; the latest values when it goes.
LumCmi5.prototype.putState = function (s, atExit) {
  this.stateWaiting = false;
  s.dirty = false;
  var doc = { location: s.values.location, suspend: s.values.suspend, status: s.status };
  return this.request("PUT", "activities/state", this.stateQuery(LUM_STATE), doc, atExit).then(function () {
    return true;
  }, function () {
    s.dirty = true;
    return false;
  });
};

LumCmi5.prototype.commit = function (s) {
  var self = this, jobs = [];
  if (!s.record) {
    s.pending = [];
    s.dirty = false;
    return true;
  }
  var news = this.news(s);
  if (news.length) jobs.push(this.post(news));
  if (s.dirty && !this.stateWaiting) {
    this.stateWaiting = true;
    jobs.push(this.queue(function () { return self.putState(s); }));
  }
  return Promise.all(jobs).then(function (ok) { return ok.every(Boolean); });
};

// terminated goes last, after everything still to say. Unloading, nothing can wait for an
// answer: what is left goes at once, terminated a moment after the request before it, and the
// queue is stopped.
LumCmi5.prototype.finish = function (s, unloading) {
  var self = this, last = s.record ? this.news(s) : [];
  last.push(this.statement("terminated", { duration: lumDuration(Date.now() - this.started) }));
  var state = s.record && (s.dirty || this.stateWaiting);
  if (!unloading) {
    // The learner's place is kept before terminated ends the token's use.
    if (state) this.queue(function () { return self.putState(s); });
    return this.queue(function () { return self.send(self.outbox.splice(0).concat(last)); }).then(function () {
      self.gone = true;
    });
  }
  this.gone = true;
  if (state) this.putState(s, true);
  lumLetGoFirst(this);
  this.send(this.outbox.splice(0).concat(last), true);
};

lumAddRuntime(10, function (win) {
  var q = new URLSearchParams(win.location.search), p = {};
  var names = ["endpoint", "fetch", "actor", "registration", "activityId"];
  for (var i = 0; i < names.length; i++) {
    p[names[i]] = q.get(names[i]);
    if (!p[names[i]]) return null;
  }
  p.actor = JSON.parse(p.actor); // no JSON, no cmi5 launch: the detector's caller moves on
  return p.actor && typeof p.actor === "object" ? new LumCmi5(p) : null;
});
