/* Lumora player: the part of every lesson page that runs before its content. parentRef is the
   frameset's player when the frameset can be scripted, otherwise this page's own. */
var parentRef = (function () {
  try {
    var p = window.parent;
    if (p && p !== window && p.lumoraPlayer && p.lumoraPlayer.writeActivityHTML) return p.lumoraPlayer;
  } catch (e) {}
  return lumoraPlayer;
})();

(function () {
  var m = /page(\d+)\.html$/i.exec(location.pathname);
  var n = m ? +m[1] : -1;
  try {
    var page = window.objLessonModule && objLessonModule.pages[n];
    if (page) document.title = page.title;
  } catch (e) {}
  // Tell the frameset which page is showing (page links move within the lesson on their own).
  // postMessage reaches it even where file:// origins keep the frames apart.
  if (window.parent !== window && n >= 0) {
    try {
      window.parent.postMessage({ lumora: "page", page: n }, "*");
    } catch (e) {}
  }
})();
