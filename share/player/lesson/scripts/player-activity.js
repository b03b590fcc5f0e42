/* Lumora player: lesson activities and glossary pop-ups. Loaded by the frameset and by every
   page, so a page renders on its own when its frameset cannot be scripted (file:// origins). */
var lumActSeq = 0;

function lumWriteActivityHTML(n) {
  try {
    var it = lum.item(arrActObjects[n - 1]);
    if (!it || !it.options.length) return '<p class="lumMissing">Activity ' + lum.esc(n) + " is not available.</p>";
    var name = "lumA" + n + "_" + ++lumActSeq;
    return '<div class="lumActivity" data-lum-act="' + n + '">' +
      '<div class="lumQuestion" id="' + name + '_q">' + it.text + "</div>" +
      '<fieldset aria-labelledby="' + name + '_q"><legend class="lumHint">' +
      (it.multi ? "Select all that apply." : "Select one answer.") + "</legend>" +
      lum.optionsHTML(it, name, lum.order(it.options.length, it.shuffle)) + "</fieldset>" +
      '<button type="button" class="lumButton" data-lum-check="' + n + '">Check answer</button>' +
      '<div class="lumFeedback" role="status" aria-live="polite"></div></div>';
  } catch (e) {
    return "";
  }
}

function lumCheckActivity(box) {
  var n = +box.getAttribute("data-lum-act"), it = lum.item(arrActObjects[n - 1]);
  var out = box.querySelector(".lumFeedback");
  if (!it || !out) return;
  var chosen = lum.chosen(box);
  if (!chosen.length) {
    out.className = "lumFeedback";
    out.innerHTML = "<p>Please choose an answer first.</p>";
    return;
  }
  var ok = lum.isCorrect(it, chosen);
  out.className = "lumFeedback " + (ok ? "lumRight" : "lumWrong");
  out.innerHTML = "<p><strong>" + (ok ? "Correct." : "Not quite.") + "</strong></p>" +
    (it.rationale ? '<div class="lumRationale">' + it.rationale + "</div>" : "");
}

function lumShowGlossaryPopup(doc, n, width, height) {
  var old = doc.getElementById("lumGlossary");
  if (old) old.lumClose();
  var t = arrDefObjects[+n];
  var opener = doc.activeElement;
  var box = doc.createElement("div");
  box.id = "lumGlossary";
  box.className = "popupBorder lumPopup";
  box.setAttribute("role", "dialog");
  box.setAttribute("aria-modal", "true");
  box.setAttribute("aria-labelledby", "lumGlossaryTitle");
  box.style.width = Math.min(+width || 240, doc.documentElement.clientWidth - 16) + "px";
  box.style.minHeight = (+height || 180) + "px";
  box.innerHTML = '<div class="popupTitle lumPopupTitle"><h2 id="lumGlossaryTitle">' +
    (t ? lum.esc(t.term) : "Glossary") + '</h2><button type="button" class="lumClose" aria-label="Close">' +
    "&times;</button></div>" + '<div class="popupTable lumPopupBody">' +
    (t ? lum.lines(lum.esc(t.definition)) : "This term is not in the glossary.") + "</div>";
  box.lumClose = function () {
    box.parentNode && box.parentNode.removeChild(box);
    doc.removeEventListener("keydown", onKey, true);
    if (opener && opener.focus) opener.focus();
  };
  function onKey(e) {
    if (e.key === "Escape") {
      e.preventDefault();
      box.lumClose();
    } else if (e.key === "Tab") {
      e.preventDefault(); // the close button is the only stop inside the pop-up
      box.querySelector(".lumClose").focus();
    }
  }
  doc.addEventListener("keydown", onKey, true);
  box.querySelector(".lumClose").onclick = box.lumClose;
  doc.body.appendChild(box);
  box.querySelector(".lumClose").focus();
  return false;
}

// The object pages reach as parentRef when they run on their own.
var lumoraPlayer = {
  writeActivityHTML: lumWriteActivityHTML,
  showGlossaryPopup: function (n, w, h) {
    return lumShowGlossaryPopup(document, n, w, h);
  }
};

document.addEventListener("click", function (e) {
  var t = e.target;
  if (!t || !t.closest) return;
  var check = t.closest("[data-lum-check]");
  if (check) lumCheckActivity(check.closest(".lumActivity"));
  // Term links point at their own anchor; following it would only jump the page.
  var a = t.closest('a[href^="#term"]');
  if (a && /showGlossaryPopup/.test(a.getAttribute("onclick") || "")) e.preventDefault();
});
