// Writes module scripts in the exact line grammar of Lumora's module writer, for modules the
// tests build themselves (odd values, large lessons). Content strings are given in stored form.
import fs from "node:fs";
import path from "node:path";

const CRLF = "\r\n";
const q = (s) => String(s).replaceAll('"', '\\"');
const x = (s) => String(s).replaceAll("\r\n", "<br>").replaceAll('"', '\\"');

function itemLines(it, kind) {
  const [list, ctor, id, text, dis, rat] =
    kind === "act"
      ? ["arrActObjects", "objActQuestion", "ActID", "actQuestion", "actDistractors", "actRationale"]
      : ["arrQuestions", "objEvalQuestion", "EvalID", "evalQuestion", "evalDistractors", "evalRationale"];
  const L = [];
  L.push(`${id} = ${list}.length;`, `thisID = ${id}+1;`);
  L.push(`${list}[${id}] = new ${ctor}(thisID, "${it.type ?? "radio"}");`);
  L.push(`${list}[${id}].${text} = "${x(it.text)}";`);
  (it.options ?? []).forEach((o, j) => {
    if (!o.text) return;
    L.push(`thisOpt = ${list}[${id}].${dis}.length;`);
    L.push(`${list}[${id}].addDistractor(${o.correct ? "true" : "false"});`);
    L.push(`${list}[${id}].${dis}[thisOpt].txtValue = "${j}";`);
    L.push(`${list}[${id}].${dis}[thisOpt].txtDisplay = "${x(o.text)}";`);
    if (kind === "eval") L.push(`${list}[${id}].${dis}[thisOpt].incorrectRationale = "${x(o.why ?? "")}";`);
    if (kind === "survey") L.push("");
  });
  if (kind === "survey") return L;
  L.push(`${list}[${id}].${rat} = "${x(it.rationale ?? "")}";`);
  if (it.shuffle) L.push(`${list}[${id}].shuffleDistractors();`, "");
  return L;
}

const written = (it) => it.text && it.options?.[0]?.text;

export function lessonScripts(m) {
  const info = [
    `var modTitle = "${q(m.title)}";`,
    "var objLessonModule = new objLesson(window.modTitle);",
    `var copyright = "${q(m.copyright)}";`,
    `var useSCORM = ${m.useSCORM ?? "true"};`,
    ...m.pages.map((p) => `objLessonModule.addPage(objLessonModule.pages.length, "${q(p.title)}");`),
    "",
    "var intNumPages = objLessonModule.pages.length;",
    "var topPage = intNumPages - 1;",
  ];
  const glossary = [];
  for (const t of m.glossary ?? []) {
    if (!t.term.trim() || !t.definition.trim()) continue;
    glossary.push("TermID = arrDefObjects.length;", "arrDefObjects[TermID] = new objGlossary(TermID);");
    glossary.push(`arrDefObjects[TermID].term = "${q(t.term)}";`);
    glossary.push(`arrDefObjects[TermID].definition = "${q(t.definition).replaceAll("\r\n", "\\n")}";`, "");
  }
  const qanda = (m.activities ?? []).filter(written).flatMap((it) => itemLines(it, "act"));
  return {
    "scripts/inc_ModuleInfo.js": info,
    "scripts/inc_Glossary.js": glossary,
    "scripts/inc_QAndA.js": qanda,
  };
}

export function evaluationScripts(m) {
  const L = [
    `var modTitle = "${q(m.title)}";`,
    `var copyright = "${q(m.copyright)}";`,
    `var useSCORM = ${m.useSCORM ?? "true"};`,
    `var shuffleEvalQuestions = ${m.shuffle ? "true" : "false"};`,
    `var intNumQuestions = ${m.intNumQuestions};`,
    "",
    ...m.questions.filter(written).flatMap((it) => itemLines(it, "eval")),
    "if(intNumQuestions > arrQuestions.length)",
    "\tintNumQuestions = arrQuestions.length;",
    "if(shuffleEvalQuestions)",
    "",
    "\tarrQuestions = shuffle(arrQuestions);",
  ];
  return { "scripts/inc_Questions.js": L };
}

export function surveyScripts(m) {
  const L = [
    `var modTitle = "${q(m.title)}";`,
    `var copyright = "${q(m.copyright)}";`,
    `var useSCORM = ${m.useSCORM ?? "true"};`,
    ...m.questions.filter(written).flatMap((it) => itemLines(it, "survey")),
    "intNumQuestions = arrQuestions.length;",
  ];
  return { "scripts/inc_Objectives.js": L };
}

export const SCALE = ["Excellent", "Good", "Average", "Below Average", "Poor"];

// A survey question built like the tool's default one: the five scale words, all "correct".
export const surveyQuestion = (objective) => ({
  text: `Rate how well you met the objective: <i>${objective}</i>.`,
  options: SCALE.map((w) => ({ text: w, correct: true })),
});

// A page file: the skeleton's lines with the content spliced between the two markers.
export function pageFile(skeleton, content) {
  const out = [];
  let copying = true;
  for (const line of skeleton.split(/\r?\n/).slice(0, -1)) {
    if (line.includes("</LUMApageContent>")) copying = true;
    if (copying) out.push(line);
    if (line.includes("<LUMApageContent>")) {
      out.push(content);
      copying = false;
    }
  }
  return out.join(CRLF) + CRLF;
}

export function writeFiles(dir, files) {
  for (const [name, lines] of Object.entries(files)) {
    const file = path.join(dir, name);
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.writeFileSync(file, lines.map((l) => l + CRLF).join(""));
  }
}

export function writeLessonPages(dir, skeleton, pages) {
  pages.forEach((p, i) => fs.writeFileSync(path.join(dir, `page${i}.html`), pageFile(skeleton, p.content)));
}
