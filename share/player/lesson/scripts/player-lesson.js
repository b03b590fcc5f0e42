/* Lumora player: the lesson frameset. Title bar, page area, Back/Next, "Page N of M", the
   outline, the copyright line; bookmark, seen pages and completion go to the LMS. */
(function () {
  var pages = (window.objLessonModule && objLessonModule.pages) || [];
  var total = pages.length, current = -1, seen = [];
  // The page the frame was last sent to; until it reports, a report from the page it leaves
  // (the first page, loading from the start, when the LMS resumes elsewhere) is stale.
  var pending = -1;
  var session = new LumSession(String(window.useSCORM) === "true");
  var $ = function (id) { return document.getElementById(id); };
  var frame;

  // Pages that reach the frameset draw their pop-ups themselves, inside the page.
  lumoraPlayer.showGlossaryPopup = function (n, w, h) {
    try {
      return frame.contentWindow.lumShowGlossaryPopup(frame.contentDocument, n, w, h);
    } catch (e) {
      return lumShowGlossaryPopup(document, n, w, h);
    }
  };

  function encode() {
    return "L" + lumCode.bits(seen, total);
  }
  function decode(s) {
    if (s.charAt(0) !== "L") return;
    var r = lumCode.reader(s.substring(1)), bits = r.bits(total);
    if (bits && r.done()) seen = bits;
  }

  function allSeen() {
    for (var i = 0; i < total; i++) if (!seen[i]) return false;
    return true;
  }

  function show(n, load) {
    if (!(n >= 0 && n < total)) return;
    if (load && n !== current) {
      pending = n;
      frame.src = pages[n].file;
    }
    current = n;
    seen[n] = true;
    $("lumPageNum").textContent = "Page " + (n + 1) + " of " + total;
    $("lumBack").disabled = n === 0;
    $("lumNext").disabled = n === total - 1;
    var links = $("lumOutline").querySelectorAll("a");
    for (var i = 0; i < links.length; i++) {
      if (i === n) links[i].setAttribute("aria-current", "page");
      else links[i].removeAttribute("aria-current");
    }
    session.setLocation(n);
    session.setSuspend(encode());
    if (allSeen()) session.setStatus("completed");
    session.commit();
  }

  function build() {
    document.title = String(window.modTitle || "Lesson");
    $("lumTitle").textContent = String(window.modTitle || "");
    $("lumCopyright").textContent = String(window.copyright || "");
    var ol = $("lumOutline"), html = "";
    for (var i = 0; i < total; i++) {
      var p = pages[i] || { title: "", file: "page" + i + ".html" };
      pages[i] = p;
      html += '<li class="outlineTitleRow"><a class="titleLink" href="' + p.file + '" target="lumContent" data-page="' +
        i + '">' + lum.esc(p.title || "Page " + (i + 1)) + "</a></li>";
    }
    ol.innerHTML = html;
    ol.addEventListener("click", function (e) {
      var a = e.target.closest && e.target.closest("a[data-page]");
      if (!a) return;
      e.preventDefault();
      show(+a.getAttribute("data-page"), true);
      if (window.matchMedia && matchMedia("(max-width: 40em)").matches) $("lumOutlineBox").open = false;
      frame.focus();
    });
    $("lumBack").onclick = function () { show(current - 1, true); };
    $("lumNext").onclick = function () { show(current + 1, true); };
    window.addEventListener("message", function (e) {
      var d = e.data;
      if (e.source !== frame.contentWindow || !d || d.lumora !== "page") return;
      if (pending >= 0 && d.page !== pending) return;
      pending = -1;
      if (d.page !== current && d.page >= 0 && d.page < total) show(d.page, false);
    });
    // A page that never reports (one that failed to load) does not hold later reports back.
    frame.addEventListener("load", function () {
      pending = -1;
    });
    if (!total) $("lumPageNum").textContent = "This lesson has no pages.";
  }

  function start() {
    frame = $("lumContent");
    // The frame names the first page, which is in or on its way before the player's scripts;
    // a lesson without pages shows nothing.
    if (total) current = 0;
    else frame.src = "about:blank";
    build();
    session.watch(window);
    session.start().then(function (info) {
      session.setStatus("incomplete");
      decode(String(info.suspend || ""));
      var at = parseInt(info.location, 10);
      show(at >= 0 && at < total ? at : 0, true);
      lumExitButton(session, $("lumNext").parentNode, "pageLink");
    });
  }
  // The frameset loads this script after its page is parsed; an older frameset loads it in its
  // head.
  if (document.readyState === "loading") document.addEventListener("DOMContentLoaded", start);
  else start();
})();
