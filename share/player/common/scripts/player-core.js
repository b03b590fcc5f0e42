/* Lumora player: the objects the module scripts build. The inc_*.js files are plain statements
   (objLesson, addPage, objGlossary, objActQuestion, objEvalQuestion, addDistractor, ...) that run
   against these constructors, so this file must load before any of them. */
var arrDefObjects = [], arrActObjects = [], arrQuestions = [];
var TermID = 0, ActID = 0, EvalID = 0, thisID = 0, thisOpt = 0;
var intNumQuestions = 0, shuffleEvalQuestions = false, useSCORM = true;
var modTitle = "", copyright = "";

function objLesson(title) {
  this.title = title;
  this.pages = [];
}
objLesson.prototype.addPage = function (n, title) {
  this.pages[n] = { title: String(title), file: "page" + n + ".html" };
};

function objGlossary(id) {
  this.id = id;
  this.term = "";
  this.definition = "";
}

function objDistractor(correct) {
  // The writer copies the author's flag text verbatim; anything but a true literal is wrong.
  this.correct = correct === true || String(correct).toLowerCase() === "true";
  this.txtValue = "";
  this.txtDisplay = "";
  this.incorrectRationale = "";
}

function lumItem(id, type, prefix) {
  this.id = id;
  this.type = String(type);
  this[prefix + "Question"] = "";
  this[prefix + "Distractors"] = [];
  this[prefix + "Rationale"] = "";
  this.shuffle = false;
}

function objActQuestion(id, type) {
  lumItem.call(this, id, type, "act");
}
objActQuestion.prototype.addDistractor = function (correct) {
  this.actDistractors.push(new objDistractor(correct));
};
objActQuestion.prototype.shuffleDistractors = function () {
  this.shuffle = true;
};

function objEvalQuestion(id, type) {
  lumItem.call(this, id, type, "eval");
}
objEvalQuestion.prototype.addDistractor = function (correct) {
  this.evalDistractors.push(new objDistractor(correct));
};
objEvalQuestion.prototype.shuffleDistractors = objActQuestion.prototype.shuffleDistractors;

// Returns a shuffled copy (Fisher-Yates); the evaluation footer assigns the result back.
function shuffle(list) {
  var a = Array.prototype.slice.call(list || []);
  for (var i = a.length - 1; i > 0; i--) {
    var j = Math.floor(Math.random() * (i + 1));
    var t = a[i];
    a[i] = a[j];
    a[j] = t;
  }
  return a;
}

/* Helpers shared by the frameset and page scripts. */
var lum = {
  // A uniform view of an activity or evaluation item, whatever its prefix; tolerant of damage.
  item: function (q) {
    if (!q) return null;
    var isAct = "actQuestion" in q;
    var opts = (isAct ? q.actDistractors : q.evalDistractors) || [];
    return {
      id: q.id,
      multi: String(q.type).toLowerCase() === "checkbox",
      text: String((isAct ? q.actQuestion : q.evalQuestion) || ""),
      rationale: String((isAct ? q.actRationale : q.evalRationale) || ""),
      shuffle: !!q.shuffle,
      options: opts.filter(function (o) { return o; })
    };
  },
  esc: function (s) {
    return String(s).replace(/[&<>"]/g, function (c) {
      return { "&": "&amp;", "<": "&lt;", ">": "&gt;", '"': "&quot;" }[c];
    });
  },
  order: function (n, shuffled) {
    var a = [];
    for (var i = 0; i < n; i++) a.push(i);
    return shuffled ? shuffle(a) : a;
  },
  // Option HTML for one item: radio or checkbox inputs inside labels, values = option indexes.
  optionsHTML: function (it, name, order, checked) {
    var h = "";
    for (var k = 0; k < order.length; k++) {
      var i = order[k], id = name + "_" + i;
      h += '<div class="lumOption"><input type="' + (it.multi ? "checkbox" : "radio") + '" id="' + id +
        '" name="' + name + '" value="' + i + '"' + (checked && checked[i] ? " checked" : "") +
        '><label for="' + id + '">' + it.options[i].txtDisplay + "</label></div>";
    }
    return h;
  },
  chosen: function (root) {
    var out = [], list = root.querySelectorAll("input:checked");
    for (var i = 0; i < list.length; i++) out.push(+list[i].value);
    return out.sort(function (a, b) { return a - b; });
  },
  correctSet: function (it) {
    var out = [];
    for (var i = 0; i < it.options.length; i++) if (it.options[i].correct) out.push(i);
    return out;
  },
  isCorrect: function (it, chosen) {
    var c = lum.correctSet(it);
    return c.length > 0 && c.join(",") === chosen.join(",");
  },
  // The text of an HTML fragment, on one line: what an LMS report shows of a question or option.
  plain: function (html) {
    // A parsed document is inert: no script runs and no picture loads.
    var doc = new DOMParser().parseFromString(String(html), "text/html");
    return (doc.body.textContent || "").replace(/\s+/g, " ").trim();
  },
  // Definitions come from the writer with CR LF turned into \n; show them as line breaks.
  lines: function (s) {
    return String(s).replace(/\r?\n/g, "<br>");
  }
};
