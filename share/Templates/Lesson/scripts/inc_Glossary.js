TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Lesson";
arrDefObjects[TermID].definition = "A sequence of pages with a glossary and embedded question-and-answer activities.";

TermID = arrDefObjects.length;
arrDefObjects[TermID] = new objGlossary(TermID);
arrDefObjects[TermID].term = "Activity";
arrDefObjects[TermID].definition = "A question inside a lesson page that gives immediate feedback and is not scored.";

