/* Lumora player: the learner's session with the LMS (SCORM 1.2, AICC HACP or none) and the
   compact progress encoding kept in cmi.suspend_data / [Core_Lesson]. */
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

// CMITimespan HH:MM:SS (hours 2 to 4 digits); AICC Time takes the same form.
function lumTimespan(ms) {
  var s = Math.max(0, Math.floor(ms / 1000));
  var h = Math.min(9999, Math.floor(s / 3600));
  function two(v) { return (v < 10 ? "0" : "") + v; }
  return two(h) + ":" + two(Math.floor(s / 60) % 60) + ":" + two(s % 60);
}

var LUM_RANK = { "": 0, "not attempted": 0, browsed: 1, incomplete: 2, failed: 3, completed: 3, passed: 4 };
var LUM_FINAL = { passed: 1, completed: 1, failed: 1 };

function lumFindAPI(win) {
  for (var i = 0; win && i <= 7; i++) {
    try {
      if (win.API) return win.API;
      if (!win.parent || win.parent === win) return null;
      win = win.parent;
    } catch (e) {
      return null; // a foreign origin up the chain: no API is reachable through it
    }
  }
  return null;
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

/* The session. start() resolves with what the LMS knows about this learner; the module then
   reports through setLocation / setSuspend / setStatus / setScore / addInteraction and commit().
   Every call is safe whatever the LMS does: errors and silence never reach the learner. */
function LumSession(enabled, win) {
  win = win || window;
  this.mode = "none";
  this.started = Date.now();
  this.finished = false;
  this.status = "";
  this.values = { location: "", suspend: "", score: "" };
  this.pending = []; // interactions not yet accepted by the LMS
  this.dirty = false;
  if (!enabled) return;
  var sid = lumLaunchParam(win.location.search, "aicc_sid");
  var url = lumLaunchParam(win.location.search, "aicc_url");
  if (sid && url) {
    this.mode = "aicc";
    this.sid = sid;
    this.url = /^[a-z][a-z0-9+.-]*:/i.test(url) ? url : "http://" + url;
    return;
  }
  this.api = lumFindAPI(win) || (win.opener ? lumFindAPI(win.opener) : null);
  if (this.api) this.mode = "scorm";
}

LumSession.prototype.call = function (name, a, b) {
  try {
    return String(this.api[name](a === undefined ? "" : a, b));
  } catch (e) {
    return "false";
  }
};

LumSession.prototype.start = function () {
  var self = this;
  var info = { entry: "", location: "", suspend: "", status: "", mastery: "" };
  if (this.mode === "scorm") {
    if (this.call("LMSInitialize") !== "true") {
      this.mode = "none";
      return Promise.resolve(info);
    }
    var get = function (el) {
      var v = self.call("LMSGetValue", el);
      return v === "false" && self.call("LMSGetLastError") !== "0" ? "" : v;
    };
    info.status = get("cmi.core.lesson_status");
    info.entry = get("cmi.core.entry");
    info.location = get("cmi.core.lesson_location");
    info.suspend = get("cmi.suspend_data");
    info.mastery = get("cmi.student_data.mastery_score");
    this.status = info.status;
    return Promise.resolve(info);
  }
  if (this.mode === "aicc") {
    return this.hacp("GetParam", "", 3000).then(function (text) {
      var r = lumParseHACP(text || "");
      var st = (r.core.lesson_status || "").split(",");
      info.status = LUM_AICC_STATUS[(st[0] || "").trim().charAt(0).toLowerCase()] || "";
      var flag = (st[1] || "").trim().charAt(0).toLowerCase();
      info.entry = flag === "r" ? "resume" : flag === "a" ? "ab-initio" : "";
      info.location = r.core.lesson_location || "";
      info.suspend = r.coreLesson;
      info.mastery = r.studentData.mastery_score || "";
      self.status = info.status;
      return info;
    });
  }
  return Promise.resolve(info);
};

// One HACP request. Resolves with the response text, or "" when it cannot be read: a silent
// or foreign LMS must not hold the learner up.
LumSession.prototype.hacp = function (command, data, timeout, atExit) {
  var body = "command=" + command + "&version=4.0&session_id=" + encodeURIComponent(this.sid) +
    "&aicc_data=" + encodeURIComponent(data);
  var url = this.url, type = "application/x-www-form-urlencoded";
  if (atExit && navigator.sendBeacon) {
    try {
      if (navigator.sendBeacon(url, new Blob([body], { type: type }))) return Promise.resolve("");
    } catch (e) {}
  }
  if (typeof fetch !== "function") return Promise.resolve("");
  var init = { method: "POST", headers: { "Content-Type": type }, body: body, keepalive: !!atExit };
  var sent = fetch(url, init)
    .then(function (r) { return r.text(); })
    .catch(function () {
      // No CORS from the LMS: deliver the data anyway, unread.
      init.mode = "no-cors";
      return fetch(url, init).then(function () { return ""; }, function () { return ""; });
    });
  if (!timeout) return sent;
  return Promise.race([sent, new Promise(function (done) { setTimeout(done, timeout, ""); })]);
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

// i: {id, type, response, pattern, result}
LumSession.prototype.addInteraction = function (i) {
  this.pending.push(i);
  this.dirty = true;
};

LumSession.prototype.coreData = function () {
  var st = this.status && this.status !== "not attempted" ? this.status : "incomplete";
  return "[Core]\r\nLesson_Location=" + this.values.location + "\r\nLesson_Status=" + st +
    "\r\nScore=" + this.values.score + "\r\nTime=" + lumTimespan(Date.now() - this.started) +
    "\r\n[Core_Lesson]\r\n" + this.values.suspend + "\r\n";
};

LumSession.prototype.commit = function (atExit) {
  if (this.finished) return Promise.resolve(false);
  var self = this;
  if (this.mode === "scorm") {
    var ok = true;
    var set = function (el, v) {
      if (self.call("LMSSetValue", el, v) !== "true") ok = false;
    };
    set("cmi.core.lesson_location", this.values.location.substring(0, 255));
    if (this.values.suspend.length <= 4096) set("cmi.suspend_data", this.values.suspend);
    if (this.status && this.status !== "not attempted") set("cmi.core.lesson_status", this.status);
    if (this.values.score !== "") {
      set("cmi.core.score.min", "0");
      set("cmi.core.score.max", "100");
      set("cmi.core.score.raw", this.values.score);
    }
    set("cmi.core.exit", this.isFinal() ? "" : "suspend");
    set("cmi.core.session_time", lumTimespan(Date.now() - this.started));
    while (this.pending.length) {
      var it = this.pending[0];
      var n = parseInt(this.call("LMSGetValue", "cmi.interactions._count"), 10) || 0;
      var p = "cmi.interactions." + n + ".";
      if (this.call("LMSSetValue", p + "id", it.id) !== "true") break; // LMS refuses: keep it
      set(p + "type", it.type);
      set(p + "student_response", it.response);
      if (it.pattern !== undefined) set(p + "correct_responses.0.pattern", it.pattern);
      set(p + "result", it.result);
      this.pending.shift();
    }
    if (this.call("LMSCommit") === "true" && ok) this.dirty = false;
    return Promise.resolve(!this.dirty);
  }
  if (this.mode === "aicc") {
    return this.hacp("PutParam", this.coreData(), 5000, atExit).then(function (text) {
      if (text === "" || lumParseHACP(text).error === "0") self.dirty = false;
      return !self.dirty;
    });
  }
  this.dirty = false;
  return Promise.resolve(true);
};

// Safe to call more than once; the second call does nothing.
LumSession.prototype.finish = function () {
  if (this.finished) return;
  this.commit(true);
  this.finished = true;
  if (this.mode === "scorm") this.call("LMSFinish");
  if (this.mode === "aicc") this.hacp("ExitAU", "", 0, true);
};

// Commit when the learner switches away and finish when the page goes: browsers no longer
// run unload handlers reliably.
LumSession.prototype.watch = function (win) {
  var self = this;
  win.addEventListener("pagehide", function () { self.finish(); });
  win.document.addEventListener("visibilitychange", function () {
    if (win.document.visibilityState === "hidden") self.commit(true);
  });
};
