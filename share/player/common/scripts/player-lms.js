/* Lumora player: the learner's session with the LMS and the compact progress encoding kept in
   its suspend data. The session speaks whichever run-time launched the module: cmi5
   (player-cmi5.js), AICC HACP, SCORM 2004 (player-scorm2004.js) or SCORM 1.2; else none. */
var lumCode = {
  A: "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_",
  // Digits needed to write every value below n in base 64 (at least one).
  width: function (n) {
    var w = 1;
    for (var cap = 64; cap < n; cap *= 64) w++;
    return w;
  },
  num: function (v, w) {
    var s = "";
    for (var i = 0; i < w; i++, v = Math.floor(v / 64)) s = lumCode.A.charAt(v % 64) + s;
    return s;
  },
  bits: function (flags, n) {
    var s = "";
    for (var c = 0; c < n; c += 6) {
      var v = 0;
      for (var b = 0; b < 6 && c + b < n; b++) if (flags[c + b]) v |= 1 << b;
      s += lumCode.A.charAt(v);
    }
    return s;
  },
  // A reader over an encoded string; every read returns -1 past the end or on a foreign char.
  reader: function (s) {
    var pos = 0;
    return {
      num: function (w) {
        var v = 0;
        for (var i = 0; i < w; i++) {
          var d = lumCode.A.indexOf(s.charAt(pos++));
          if (d < 0) return -1;
          v = v * 64 + d;
        }
        return v;
      },
      bits: function (n) {
        var out = [];
        for (var c = 0; c < n; c += 6) {
          var v = lumCode.A.indexOf(s.charAt(pos++));
          if (v < 0) return null;
          for (var b = 0; b < 6 && c + b < n; b++) out[c + b] = !!(v & (1 << b));
        }
        return out;
      },
      done: function () { return pos === s.length; }
    };
  }
};

// Answer identifiers of up to 36 options: one character each.
var LUM_CHARS = "0123456789abcdefghijklmnopqrstuvwxyz";

// CMITimespan HH:MM:SS (hours 2 to 4 digits); AICC Time takes the same form.
function lumTimespan(ms) {
  var s = Math.max(0, Math.floor(ms / 1000));
  var h = Math.min(9999, Math.floor(s / 3600));
  function two(v) { return (v < 10 ? "0" : "") + v; }
  return two(h) + ":" + two(Math.floor(s / 60) % 60) + ":" + two(s % 60);
}

// An ISO 8601 duration to the hundredth of a second, as SCORM 2004 and xAPI take it: "PT1H2M3.45S".
function lumDuration(ms) {
  var cs = Math.max(0, Math.round(ms / 10));
  return "PT" + Math.floor(cs / 360000) + "H" + (Math.floor(cs / 6000) % 60) + "M" + (cs % 6000) / 100 + "S";
}

// A UTC time to the hundredth of a second: "2025-01-31T12:34:56.78Z".
function lumTimestamp(date) {
  return date.toISOString().replace(/(\.\d\d)\d*Z$/, "$1Z");
}

var LUM_RANK = { "": 0, "not attempted": 0, browsed: 1, incomplete: 2, failed: 3, completed: 3, passed: 4 };
var LUM_FINAL = { passed: 1, completed: 1, failed: 1 };

// A SCORM API object by name ("API" for 1.2, "API_1484_11" for 2004): from `win` up through its
// parents, at most seven steps.
function lumFindAPI(win, name) {
  for (var i = 0; win && i <= 7; i++) {
    try {
      if (win[name]) return win[name];
      if (!win.parent || win.parent === win) return null;
      win = win.parent;
    } catch (e) {
      return null; // a foreign origin up the chain: no API is reachable through it
    }
  }
  return null;
}

// The SCORM API of the window that launched this one: its own frames first, then its opener's.
function lumFindLaunchAPI(win, name) {
  return lumFindAPI(win, name) || (win.opener ? lumFindAPI(win.opener, name) : null);
}

// A call on a SCORM API object: strings in, a string out, "false" for anything that throws.
function lumApiCall(api, name, a, b) {
  try {
    return String(api[name](a === undefined ? "" : a, b));
  } catch (e) {
    return "false";
  }
}

// A choice's options as identifiers, for a response or a correct pattern: "0[,]2" (SCORM 2004
// and xAPI alike).
function lumChoiceIds(list) {
  return list.map(function (j) { return String(j); }).join("[,]");
}

// Launch parameters by name, any case. aicc_url may arrive unencoded with its own query, so it
// runs up to the next known parameter rather than the next "&".
function lumLaunchParam(search, name) {
  var m = new RegExp("[?&]" + name + "=", "i").exec(search);
  if (!m) return "";
  var rest = search.substring(m.index + m[0].length);
  var stop = /&aicc_(sid|url)=/i.exec(rest);
  if (stop) rest = rest.substring(0, stop.index);
  else if (name.toLowerCase() !== "aicc_url") rest = rest.split("&")[0];
  try {
    return decodeURIComponent(rest.replace(/\+/g, " "));
  } catch (e) {
    return rest;
  }
}

// The run-times a module can meet, the most particular launch first: each detector looks at the
// window and returns its connection, or nothing.
var lumRuntimes = [];
function lumAddRuntime(rank, detect) {
  lumRuntimes.push({ rank: rank, detect: detect });
  lumRuntimes.sort(function (a, b) { return a.rank - b.rank; });
}

/* The session. start() resolves with what the LMS knows about this learner; the module then
   reports through setLocation / setSuspend / setStatus / setScore / addInteraction and commit().
   Every call is safe whatever the LMS does: errors and silence never reach the learner.
   A connection (this.lms) implements start(session, info) -> connected (or a promise of it),
   commit(session, atExit) and finish(session, unloading); the session keeps what is to be
   reported. Outside the normal mode (browse, review) a connection clears `record` and then
   tells the LMS nothing that counts. */
function LumSession(enabled, win) {
  win = win || window;
  this.mode = "none";
  this.started = Date.now();
  this.finished = false;
  this.record = true;
  this.status = "";
  this.values = { location: "", suspend: "", score: "" };
  this.pending = []; // interactions not yet accepted by the LMS
  this.dirty = false;
  this.lms = null;
  if (!enabled) return;
  for (var i = 0; i < lumRuntimes.length && !this.lms; i++) {
    try {
      this.lms = lumRuntimes[i].detect(win);
    } catch (e) {}
  }
  if (this.lms) this.mode = this.lms.mode;
}

// Calls a connection's method at once (a page going away runs no later task) and gives its
// outcome as a promise that never fails: false for anything thrown or rejected.
function lumSettled(lms, method, session, flag) {
  try {
    return Promise.resolve(lms[method](session, flag)).then(null, function () { return false; });
  } catch (e) {
    return Promise.resolve(false);
  }
}

LumSession.prototype.start = function () {
  var self = this;
  var info = { entry: "", location: "", suspend: "", status: "", mastery: "" };
  if (!this.lms) return Promise.resolve(info);
  return lumSettled(this.lms, "start", this, info).then(function (connected) {
    if (!connected) {
      self.lms = null;
      self.mode = "none";
    }
    self.status = info.status;
    return info;
  });
};

LumSession.prototype.setLocation = function (v) { this.values.location = String(v); this.dirty = true; };
LumSession.prototype.setSuspend = function (v) { this.values.suspend = String(v); this.dirty = true; };
LumSession.prototype.setScore = function (raw) { this.values.score = String(raw); this.dirty = true; };
LumSession.prototype.isFinal = function () { return !!LUM_FINAL[this.status]; };

// A status only ever moves up, and "not attempted" is never sent.
LumSession.prototype.setStatus = function (s) {
  if ((LUM_RANK[s] || 0) > (LUM_RANK[this.status] || 0) || (s === "passed" && this.status !== "passed")) {
    this.status = s;
    this.dirty = true;
    return true;
  }
  return false;
};

// i: {id: "Q3" or "S2", type: "choice" or "likert", chosen: [option indexes], correct: [indexes]
// and right (choice), values: each option's value, labels: each option's text, text: the question}
LumSession.prototype.addInteraction = function (i) {
  i.time = new Date();
  this.pending.push(i);
  this.dirty = true;
};

// Resolves true when the LMS took everything; false leaves it to a later commit.
LumSession.prototype.commit = function (atExit) {
  if (this.finished) return Promise.resolve(false);
  if (!this.lms) {
    this.dirty = false;
    return Promise.resolve(true);
  }
  return lumSettled(this.lms, "commit", this, !!atExit).then(function (ok) { return !!ok; });
};

// The last commit and the end of the session. Safe to call more than once; the second call does
// nothing. `unloading`: the page is going, so nothing may wait for an answer.
LumSession.prototype.finish = function (unloading) {
  if (this.finished) return Promise.resolve();
  this.finished = true;
  if (!this.lms) return Promise.resolve();
  return lumSettled(this.lms, "finish", this, !!unloading);
};

/* Requests handed to the browser within a few milliseconds of each other may reach the LMS in
   either order. While the page lives, a connection orders its requests by waiting for answers;
   as the page goes it cannot, so its last request (ExitAU, terminated) leaves only once the one
   before it, still unanswered, has had this long to go first. A connection keeps in `onWay`
   when its unanswered request was handed over (null: none). */
var LUM_EXIT_GAP = 50; // ms

function lumNow() {
  return window.performance && performance.now ? performance.now() : Date.now();
}

// Marks `conn`'s request as on its way until `sent` settles; gives `sent` back.
function lumOnWay(conn, sent) {
  var at = (conn.onWay = lumNow());
  var answered = function () {
    if (conn.onWay === at) conn.onWay = null;
  };
  return sent.then(function (v) {
    answered();
    return v;
  }, function (e) {
    answered();
    throw e;
  });
}

// Holds the page on the spot (it is going, and a timer would never fire) until the request on its
// way has had LUM_EXIT_GAP ms to go first.
function lumLetGoFirst(conn) {
  if (conn.onWay === null) return;
  while (lumNow() < conn.onWay + LUM_EXIT_GAP) {}
}

// Where the LMS wants the learner sent when the module is left; "" when it does not say.
LumSession.prototype.returnURL = function () {
  return (this.lms && this.lms.returnURL) || "";
};

// Ends the session, then takes the window to the LMS's return address (waiting at most a few
// seconds for the LMS to take the end of the session).
LumSession.prototype.leave = function (win) {
  var url = this.returnURL();
  var ended = this.finish(false);
  return Promise.race([ended, new Promise(function (done) { setTimeout(done, 3000); })]).then(function () {
    if (url) win.location.href = url;
  });
};

// The way back when the LMS gave one (cmi5's return address): a button that ends the session and
// takes the window there. Nothing when there is no such address.
function lumExitButton(session, parent, className) {
  if (!session.returnURL() || !parent) return null;
  var doc = parent.ownerDocument, b = doc.createElement("button");
  b.type = "button";
  b.id = "lumExit";
  b.className = className;
  b.textContent = "Exit";
  b.onclick = function () {
    b.disabled = true;
    session.leave(doc.defaultView);
  };
  parent.appendChild(b);
  return b;
}

// Commit when the learner switches away and finish when the page goes: browsers no longer
// run unload handlers reliably.
LumSession.prototype.watch = function (win) {
  var self = this;
  win.addEventListener("pagehide", function () { self.finish(true); });
  win.document.addEventListener("visibilitychange", function () {
    if (win.document.visibilityState === "hidden" && self.dirty) self.commit(true);
  });
};

/* SCORM 1.2: an API object in a frame above the module or above its opener. */
function LumScorm12(api) {
  this.mode = "scorm";
  this.api = api;
}

LumScorm12.prototype.call = function (name, a, b) { return lumApiCall(this.api, name, a, b); };

LumScorm12.prototype.start = function (s, info) {
  var self = this;
  if (this.call("LMSInitialize") !== "true") return false;
  var get = function (el) {
    var v = self.call("LMSGetValue", el);
    return v === "false" && self.call("LMSGetLastError") !== "0" ? "" : v;
  };
  info.status = get("cmi.core.lesson_status");
  info.entry = get("cmi.core.entry");
  info.location = get("cmi.core.lesson_location");
  info.suspend = get("cmi.suspend_data");
  info.mastery = get("cmi.student_data.mastery_score");
  return true;
};

// An interaction in the 1.2 vocabulary: a choice answered in single characters (more than 36
// options need the values, as fill-in), a rating as a likert digit.
function lumScorm12Interaction(i) {
  if (i.type === "likert")
    return { type: "likert", response: LUM_CHARS.charAt(Math.min(35, i.chosen[0] + 1)), result: "neutral" };
  var chars = i.values.length <= 36;
  var text = function (list) {
    return list.map(function (j) { return chars ? LUM_CHARS.charAt(j) : i.values[j]; }).join(",").substring(0, 255);
  };
  return { type: chars ? "choice" : "fill-in", response: text(i.chosen), pattern: text(i.correct),
    result: i.right ? "correct" : "wrong" };
}

LumScorm12.prototype.commit = function (s) {
  var self = this, ok = true;
  var set = function (el, v) {
    if (self.call("LMSSetValue", el, v) !== "true") ok = false;
  };
  set("cmi.core.lesson_location", s.values.location.substring(0, 255));
  if (s.values.suspend.length <= 4096) set("cmi.suspend_data", s.values.suspend);
  if (s.status && s.status !== "not attempted") set("cmi.core.lesson_status", s.status);
  if (s.values.score !== "") {
    set("cmi.core.score.min", "0");
    set("cmi.core.score.max", "100");
    set("cmi.core.score.raw", s.values.score);
  }
  set("cmi.core.exit", s.isFinal() ? "" : "suspend");
  set("cmi.core.session_time", lumTimespan(Date.now() - s.started));
  while (s.pending.length) {
    var it = lumScorm12Interaction(s.pending[0]);
    var n = parseInt(this.call("LMSGetValue", "cmi.interactions._count"), 10) || 0;
    var p = "cmi.interactions." + n + ".";
    if (this.call("LMSSetValue", p + "id", s.pending[0].id) !== "true") break; // LMS refuses: keep it
    set(p + "type", it.type);
    set(p + "student_response", it.response);
    if (it.pattern !== undefined) set(p + "correct_responses.0.pattern", it.pattern);
    set(p + "result", it.result);
    s.pending.shift();
  }
  if (this.call("LMSCommit") === "true" && ok) s.dirty = false;
  return !s.dirty;
};

LumScorm12.prototype.finish = function (s) {
  this.commit(s);
  this.call("LMSFinish");
};

lumAddRuntime(40, function (win) {
  var api = lumFindLaunchAPI(win, "API");
  return api ? new LumScorm12(api) : null;
});

/* AICC HACP: the LMS's address and the session id come as launch parameters. */
function lumParseHACP(text) {
  var out = { error: "", core: {}, coreLesson: "", studentData: {} };
  var lines = String(text).split(/\r\n|\r|\n/), section = "", data = false, lesson = [];
  for (var i = 0; i < lines.length; i++) {
    var line = lines[i];
    if (!data) {
      var kv = /^\s*([A-Za-z_]+)\s*=(.*)$/.exec(line);
      if (!kv) continue;
      var key = kv[1].toLowerCase();
      if (key === "error") out.error = kv[2].trim();
      if (key !== "aicc_data") continue;
      data = true;
      line = kv[2];
      if (!line.trim()) continue;
    }
    var sec = /^\s*\[([^\]]+)\]\s*$/.exec(line);
    if (sec) {
      section = sec[1].toLowerCase();
      continue;
    }
    if (section === "core_lesson") lesson.push(line);
    else {
      var p = /^\s*([^=]+?)\s*=(.*)$/.exec(line);
      if (p && section === "core") out.core[p[1].toLowerCase()] = p[2].trim();
      if (p && section === "student_data") out.studentData[p[1].toLowerCase()] = p[2].trim();
    }
  }
  out.coreLesson = lesson.join("").trim();
  return out;
}

var LUM_AICC_STATUS = { p: "passed", c: "completed", f: "failed", i: "incomplete", b: "browsed", n: "not attempted" };

/* The requests of one session go one at a time: each is sent when the LMS has answered the one
   before (or given up on), so none overtakes another and ExitAU is always the last. A strict
   LMS drops whatever arrives after ExitAU. */
function LumAicc(sid, url) {
  this.mode = "aicc";
  this.sid = sid;
  this.url = /^[a-z][a-z0-9+.-]*:/i.test(url) ? url : "http://" + url;
  this.tail = Promise.resolve();
  this.putWaiting = false; // a PutParam is queued: it takes the latest values when it goes
  this.gone = false;       // the page went: the queue sends nothing more
  this.onWay = null;
  this.opaque = false;     // the LMS's answers cannot be read (no CORS): send, do not read
}

// One request. Resolves with the answer's text, or "" when there is none to read: a silent or
// foreign LMS must not hold the learner up. Every request outlives the page (keepalive), so one
// on its way when the window closes still arrives; at exit, with no answer awaited, a beacon.
LumAicc.prototype.post = function (command, data, timeout, atExit) {
  var self = this, type = "application/x-www-form-urlencoded";
  var body = "command=" + command + "&version=4.0&session_id=" + encodeURIComponent(this.sid) +
    "&aicc_data=" + encodeURIComponent(data);
  if (atExit && navigator.sendBeacon) {
    try {
      if (navigator.sendBeacon(this.url, new Blob([body], { type: type }))) {
        this.onWay = lumNow(); // never answered: on its way until the page is gone
        return Promise.resolve("");
      }
    } catch (e) {}
  }
  if (typeof fetch !== "function") return Promise.resolve("");
  var init = { method: "POST", headers: { "Content-Type": type }, body: body, keepalive: body.length < 60000 };
  if (this.opaque) init.mode = "no-cors";
  var sent = fetch(this.url, init).then(function (r) {
    return r.type === "opaque" ? "" : r.text();
  }, function () {
    // Another origin without CORS: the request went, its answer cannot be read. Sending it again
    // would only deliver it twice, late; later requests go unread.
    self.opaque = true;
    return "";
  });
  if (timeout) sent = Promise.race([sent, new Promise(function (done) { setTimeout(done, timeout, ""); })]);
  return lumOnWay(this, sent);
};

// Queues a request; `data` is called when it goes, so it sends the values of that moment.
LumAicc.prototype.send = function (command, data, timeout) {
  var self = this;
  var answer = this.tail.then(function () {
    return self.gone ? "" : self.post(command, data(), timeout);
  });
  this.tail = answer.then(null, function () {});
  return answer;
};

LumAicc.prototype.start = function (s, info) {
  return this.send("GetParam", function () { return ""; }, 3000).then(function (text) {
    var r = lumParseHACP(text || "");
    var st = (r.core.lesson_status || "").split(",");
    info.status = LUM_AICC_STATUS[(st[0] || "").trim().charAt(0).toLowerCase()] || "";
    var flag = (st[1] || "").trim().charAt(0).toLowerCase();
    info.entry = flag === "r" ? "resume" : flag === "a" ? "ab-initio" : "";
    info.location = r.core.lesson_location || "";
    info.suspend = r.coreLesson;
    info.mastery = r.studentData.mastery_score || "";
    return true;
  });
};

LumAicc.prototype.coreData = function (s) {
  var st = s.status && s.status !== "not attempted" ? s.status : "incomplete";
  return "[Core]\r\nLesson_Location=" + s.values.location + "\r\nLesson_Status=" + st +
    "\r\nScore=" + s.values.score + "\r\nTime=" + lumTimespan(Date.now() - s.started) +
    "\r\n[Core_Lesson]\r\n" + s.values.suspend + "\r\n";
};

// The values as they are when the request goes; marked sent then, and unsent again when the
// LMS answers with an error.
LumAicc.prototype.takeCoreData = function (s) {
  this.putWaiting = false;
  s.dirty = false;
  return this.coreData(s);
};

LumAicc.prototype.commit = function (s) {
  var self = this;
  if (!s.dirty) return true;
  if (this.putWaiting) return this.tail.then(function () { return !s.dirty; });
  this.putWaiting = true;
  return this.send("PutParam", function () { return self.takeCoreData(s); }, 5000).then(function (text) {
    if (text !== "" && lumParseHACP(text).error !== "0") s.dirty = true;
    return !s.dirty;
  });
};

LumAicc.prototype.finish = function (s, unloading) {
  var self = this;
  if (!unloading) {
    this.commit(s);
    return this.send("ExitAU", function () { return ""; }, 5000);
  }
  // Nothing can wait for an answer now: what is still queued goes at once and the queue is
  // stopped so that nothing follows ExitAU, which leaves a moment after the PutParam before it.
  this.gone = true;
  if (s.dirty || this.putWaiting) this.post("PutParam", this.takeCoreData(s), 0, true);
  lumLetGoFirst(this);
  this.post("ExitAU", "", 0, true);
};

lumAddRuntime(20, function (win) {
  var sid = lumLaunchParam(win.location.search, "aicc_sid");
  var url = lumLaunchParam(win.location.search, "aicc_url");
  return sid && url ? new LumAicc(sid, url) : null;
});
