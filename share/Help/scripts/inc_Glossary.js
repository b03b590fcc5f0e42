TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Module";
arrDefObjects[TermID].definition = "One piece of training that Lumora builds: a Lesson, an Evaluation or a Survey. A module is a folder in your workspace that holds everything a learner's browser needs to run it.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Lesson";
arrDefObjects[TermID].definition = "A module made of pages that the learner reads in order, with a glossary and short Q&A activities on its pages.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Evaluation";
arrDefObjects[TermID].definition = "A graded module: a pool of single-select or multiple-select questions, of which a set number is asked, with a score that is reported to the LMS.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Survey";
arrDefObjects[TermID].definition = "A module of rating questions. Every question is answered on the same five-point scale, from Excellent to Poor, and nothing is graded.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Workspace";
arrDefObjects[TermID].definition = "The folder that holds your modules, one sub-folder each. It is MyContent beside the program, or Lumora in your documents folder when Lumora is installed for the whole computer.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Template";
arrDefObjects[TermID].definition = "The sample module of each kind that Lumora copies when you start a new module. A new module therefore runs at once and shows what a module of its kind can hold.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Glossary";
arrDefObjects[TermID].definition = "The list of terms of a Lesson, each with its definition. Learners open a definition from a term link on a page.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Term link";
arrDefObjects[TermID].definition = "A word or phrase on a lesson page that opens the definition of a glossary term in a small window.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Activity";
arrDefObjects[TermID].definition = "A question placed inside a lesson page. The learner answers it on the page and sees at once whether the answer was right, with the rationale.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Rationale";
arrDefObjects[TermID].definition = "The explanation of the right answer that a learner sees after answering an activity or a question.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Question pool";
arrDefObjects[TermID].definition = "All the questions of an Evaluation. Each learner is asked a set number of them, taken from the pool.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Player";
arrDefObjects[TermID].definition = "The scripts, styles and pictures inside every module that show it to the learner in a browser and talk to the LMS.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "LMS";
arrDefObjects[TermID].definition = "Learning management system: the web site where your organisation publishes training, enrols learners and keeps their progress and scores.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "SCORM";
arrDefObjects[TermID].definition = "A standard that lets a module report progress, completion and scores to an LMS. Lumora modules speak SCORM 1.2 and SCORM 2004.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "AICC";
arrDefObjects[TermID].definition = "An older standard for the same purpose as SCORM. Lumora modules carry the AICC course files, so an AICC LMS imports them too.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "cmi5";
arrDefObjects[TermID].definition = "A newer standard built on xAPI: the module sends statements about the learner's progress to the LMS's learning record store.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Package";
arrDefObjects[TermID].definition = "A zip file that holds a whole module and the description an LMS reads when you upload it.";

