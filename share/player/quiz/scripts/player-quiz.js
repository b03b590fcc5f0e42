/* Lumora player: the evaluation (poolframeset.html) and the survey (surveyframeset.html). Both
   show their questions on one page; the body's data-kind tells them apart. */
function lumQuiz(doc, kind) {
  var survey = kind === "survey";
  var session = new LumSession(String(window.useSCORM) === "true");
  var $ = function (id) { return doc.getElementById(id); };
  // Items keep their written position (id - 1) as a stable number: the pool may have been
  // shuffled by the script footer, and a resumed attempt must find the same questions.
  var pool = [], byNum = {};
  for (var i = 0; i < arrQuestions.length; i++) {
    var it = lum.item(arrQuestions[i]);
    if (!it || !it.options.length) continue; // nothing to answer: never asked
    it.num = parseInt(it.id, 10) - 1;
    if (!(it.num >= 0) || byNum[it.num]) it.num = 100000 + i;
    byNum[it.num] = it;
    pool.push(it);
  }
  var total = arrQuestions.length, w = lumCode.width(total);
  var count = parseInt(window.intNumQuestions, 10);
  if (survey || !(count > 0) || count > pool.length) count = pool.length;
  var asked = pool.slice(0, count), answers = [], submitted = false, info = {};

  function encode() {
    var s = (survey ? "S" : "E") + (submitted ? "s" : "a");
    for (var k = 0; k < asked.length; k++) {
      var it = asked[k], a = answers[k] || [];
      if (survey) s += lumCode.num(a.length ? a[0] + 1 : 0, lumCode.width(it.options.length + 1));
      else {
        var flags = [];
        for (var j = 0; j < a.length; j++) flags[a[j]] = true;
        s += lumCode.num(it.num, w) + lumCode.bits(flags, it.options.length);
      }
    }
    return s;
  }
  function decode(s) {
    if (s.charAt(0) !== (survey ? "S" : "E") || !/^[as]$/.test(s.charAt(1))) return;
    var r = lumCode.reader(s.substring(2)), list = [], got = [], used = {};
    for (var k = 0; survey ? k < asked.length : !r.done(); k++) {
      var it = survey ? asked[k] : byNum[r.num(w)];
      if (!it || used[it.num]) return;
      used[it.num] = 1;
      var a = [];
      if (survey) {
        var v = r.num(lumCode.width(it.options.length + 1));
        if (v < 0 || v > it.options.length) return;
        if (v) a.push(v - 1);
      } else {
        var bits = r.bits(it.options.length);
        if (!bits) return;
        for (var j = 0; j < bits.length; j++) if (bits[j]) a.push(j);
      }
      list.push(it);
      got.push(a);
    }
    if (!r.done() || !list.length) return;
    asked = list;
    answers = got;
    submitted = s.charAt(1) === "s";
  }

  function render() {
    var h = "";
    for (var k = 0; k < asked.length; k++) {
      var it = asked[k], name = "lumQ" + k, checked = {};
      (answers[k] || []).forEach(function (j) { checked[j] = true; });
      h += '<section class="lumQ" id="' + name + '" aria-labelledby="' + name + '_h">' +
        '<h2 id="' + name + '_h">Question ' + (k + 1) + " of " + asked.length + "</h2>" +
        '<div class="lumQuestion" id="' + name + '_q">' + it.text + "</div>" +
        '<fieldset aria-labelledby="' + name + '_h ' + name + '_q"><legend class="lumHint">' +
        (survey ? "Choose one rating." : it.multi ? "Select all that apply." : "Select one answer.") +
        "</legend>" + lum.optionsHTML(it, name, lum.order(it.options.length, it.shuffle && !survey), checked) +
        '</fieldset><div class="lumReview"></div></section>';
    }
    $("lumQuestions").innerHTML = h || '<p class="lumMissing">There are no questions to answer.</p>';
    $("lumIntro").textContent = survey
      ? "Rate each item below, then select Submit."
      : "Answer the " + (asked.length === 1 ? "question" : asked.length + " questions") + " below, then select Submit.";
  }

  function collect() {
    for (var k = 0; k < asked.length; k++) answers[k] = lum.chosen($("lumQ" + k));
  }

  function score() {
    var right = 0;
    for (var k = 0; k < asked.length; k++) if (lum.isCorrect(asked[k], answers[k] || [])) right++;
    return asked.length ? Math.round((100 * right) / asked.length) : 0;
  }

  // The review after submitting: each question right or wrong, the rationale of every wrongly
  // chosen option, and the question's own rationale.
  function review() {
    var inputs = doc.querySelectorAll("#lumQuestions input");
    for (var i = 0; i < inputs.length; i++) inputs[i].disabled = true;
    $("lumSubmit").hidden = true;
    var res = $("lumResult");
    if (survey) {
      res.innerHTML = '<h2 tabindex="-1">Thank you!</h2><p>Your ratings have been recorded.</p>';
    } else {
      for (var k = 0; k < asked.length; k++) {
        var it = asked[k], a = answers[k] || [], ok = lum.isCorrect(it, a), h = "";
        h += '<p class="' + (ok ? "lumRight" : "lumWrong") + '"><strong>' + (ok ? "Correct" : "Incorrect") + "</strong></p>";
        for (var j = 0; j < a.length; j++) {
          var o = it.options[a[j]];
          if (o && !o.correct && o.incorrectRationale)
            h += '<div class="lumOptRationale"><span class="lumVisuallyHidden">About your choice: </span>' +
              o.incorrectRationale + "</div>";
        }
        if (it.rationale) h += '<div class="lumRationale">' + it.rationale + "</div>";
        $("lumQ" + k).querySelector(".lumReview").innerHTML = h;
      }
      var raw = score(), m = parseFloat(info.mastery);
      var verdict = isFinite(m) ? (raw >= m ? "You passed." : "You did not pass. The passing score is " + m + "%.") : "";
      res.innerHTML = '<h2 tabindex="-1" class="lumScore">Your score: ' + raw + "%</h2>" + (verdict ? "<p>" + verdict + "</p>" : "");
    }
    res.hidden = false;
    res.querySelector("h2").focus();
  }

  function submit(e) {
    if (e) e.preventDefault();
    if (submitted) return;
    collect();
    var missing = [];
    for (var k = 0; k < asked.length; k++) {
      var q = $("lumQ" + k), none = !answers[k].length;
      q.classList.toggle("lumUnanswered", none);
      if (none) missing.push(k + 1);
    }
    if (missing.length) {
      $("lumMsg").textContent = "Please answer every question before submitting. Not yet answered: " + missing.join(", ") + ".";
      var first = $("lumQ" + (missing[0] - 1)).querySelector("input");
      if (first) first.focus();
      return;
    }
    $("lumMsg").textContent = "";
    submitted = true;
    for (var k2 = 0; k2 < asked.length; k2++) {
      var it = asked[k2], a = answers[k2];
      session.addInteraction({ id: (survey ? "S" : "Q") + (it.num + 1), type: survey ? "likert" : "choice", chosen: a,
        correct: survey ? undefined : lum.correctSet(it), right: !survey && lum.isCorrect(it, a),
        values: it.options.map(function (o) { return String(o.txtValue); }),
        labels: it.options.map(function (o) { return lum.plain(o.txtDisplay); }), text: lum.plain(it.text) });
    }
    if (survey) session.setStatus("completed");
    else {
      var raw = score(), m = parseFloat(info.mastery);
      session.setScore(raw);
      session.setStatus(isFinite(m) ? (raw >= m ? "passed" : "failed") : "completed");
    }
    session.setSuspend(encode());
    session.commit();
    review();
  }

  doc.title = String(window.modTitle || (survey ? "Survey" : "Evaluation"));
  $("lumTitle").textContent = String(window.modTitle || "");
  $("lumCopyright").textContent = String(window.copyright || "");
  $("lumForm").addEventListener("submit", submit);
  $("lumQuestions").addEventListener("change", function () {
    if (submitted) return;
    collect();
    session.setSuspend(encode());
    session.commit();
  });
  session.watch(window);
  return session.start().then(function (got) {
    info = got;
    decode(String(info.suspend || ""));
    session.setStatus(submitted ? session.status : "incomplete");
    render();
    session.setSuspend(encode());
    if (submitted) review();
    session.commit();
    lumExitButton(session, $("lumForm").parentNode, "lumButton");
  });
}

document.addEventListener("DOMContentLoaded", function () {
  lumQuiz(document, document.body.getAttribute("data-kind"));
});
